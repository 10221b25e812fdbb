// Who has been asked for a day.
#pragma once

#include "common/Dates.h"

#include <QHash>
#include <QString>
#include <optional>

namespace tallyroom {

class AnswersOfDay {
public:
    // Reads the audit, where answers that were taken back or deleted are none, and the contacts. An
    // entry that cannot be read marks nobody. Errors are silent by design, a file in use among
    // them, and false: the marks help to choose, and a file that fails is reported by the command
    // that needs it. What was known of the same day stays then.
    [[nodiscard]] bool read(const QString& dataPath, Date day);
    void clear() { *this = {}; }

    // "Declined 8:00, 11/21/2026 9:12 by jo", "No answer, 11/21/2026 8:55 by jo: …", a line for
    // each, the latest last. Empty for who was not asked.
    QString noteOf(const QString& employee) const;
    bool hasAnswered(const QString& employee) const;

private:
    struct Known {
        QString note;
        bool hasAnswered = false;
    };
    std::optional<Date> m_day;
    QHash<QString, Known> m_known; // by folded code
};

} // namespace tallyroom
