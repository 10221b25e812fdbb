// Who has been asked for a day.
#pragma once

#include "common/Dates.h"

#include <QHash>
#include <QString>

namespace tallyroom {

class AnswersOfDay {
public:
    // Reads the audit: answers that were taken back or deleted are none. An entry that cannot be
    // read marks nobody. Errors are silent by design and leave nobody marked: the marks help to
    // choose, and a file that fails is reported by the command that needs it.
    void read(const QString& dataPath, Date day);
    void clear() { m_notes.clear(); }

    // "Declined 8:00, 11/21/2026 9:12 by jo", a line for each answer, the latest last. Empty for
    // who has none.
    QString noteOf(const QString& employee) const;

private:
    QHash<QString, QString> m_notes; // by folded code
};

} // namespace tallyroom
