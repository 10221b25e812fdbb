// How GoogleTest shows the project's values.
#pragma once

#include "common/Dates.h"
#include "common/RunError.h"

#include <QString>
#include <gtest/gtest.h>
#include <optional>
#include <ostream>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
QT_END_NAMESPACE

namespace tallyroom {

inline void PrintTo(Date date, std::ostream* out) {
    *out << Dates::toIso(date).toStdString();
}

// The number of the RunError that a command raises, 0 when it raises none; `error` receives it.
template<class Command>
int errorNumberOf(const Command& command, std::optional<RunError>* error = nullptr) {
    try {
        command();
        return 0;
    } catch (const RunError& raised) {
        if (error)
            error->emplace(raised);
        return raised.number();
    }
}

} // namespace tallyroom
