// Who has been asked for a day.
#pragma once

#include "common/Dates.h"

#include <QHash>
#include <QString>
#include <optional>

namespace tallyroom {

class AnswersOfDay {
public:
    // Reads the audit: answers that were taken back or deleted are none. An entry that cannot be
    // read marks nobody. Errors are silent by design, a file in use among them, and false: the
    // marks help to choose, and a file that fails is reported by the command that needs it. What
    // was known of the same day stays then.
    [[nodiscard]] bool read(const QString& dataPath, Date day);
    void clear() { *this = {}; }

    // "Declined 8:00, 11/21/2026 9:12 by jo", a line for each answer, the latest last. Empty for
    // who has none.
    QString noteOf(const QString& employee) const;

private:
    std::optional<Date> m_day;
    QHash<QString, QString> m_notes; // by folded code
};

} // namespace tallyroom
