#include "common/CoreFunctions.h"

#include "common/Format.h"
#include "common/Variant.h"

namespace tallyroom::CoreFunctions {

void InitializeCF() noexcept {
    // The library that this call prepared is part of the program now.
}

int FindInBox(const QStringList& entries, const QString& text) {
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (entries[i].startsWith(text, Qt::CaseInsensitive))
            return static_cast<int>(i);
    }
    return -1;
}

QString listEntry(const QString& code, const QString& description) {
    const QString picture = QLatin1Char('!') + QString(codeWidth, QLatin1Char('@'));
    const QString codeColumn =
        code.isEmpty() ? QString(codeWidth, QLatin1Char(' ')) : formatValue(code, picture);
    return codeColumn + description.trimmed();
}

QString GetCode(const QString& entry) {
    return entry.left(codeWidth).trimmed();
}

} // namespace tallyroom::CoreFunctions
