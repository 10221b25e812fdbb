// What an answer would do, as the controls of the board stand.
#pragma once

#include "setup/TotallingPeriod.h"

#include <QStringList>

namespace tallyroom {

struct Offer {
    QStringList names; // of the selected employees, from the upper row to the lower one
    int answered = 0;  // of these, who have an answer for the day already
    bool breakOut = false;
    QString amount;                        // Text1, as typed
    QString doubleAmount;                  // Text2; used only when broken out
    QString canvassDate;                   // to_date
    std::optional<TotallingPeriod> period; // nothing: all dates count
    Date today;

    // Who, how much and when; what is unusual about it, and why it cannot be recorded. Empty while
    // nobody is selected.
    QString text() const;
    // Why it cannot be recorded, as text() says it. Empty when it can.
    QString hindrance() const;
};

namespace Said {

QString day(Date day);                        // "Sat 11/28/2026"
QString dayWithoutYear(Date day, Date today); // "Sat 11/28", in another year with it
QString amount(const QString& typed);         // "8:00"; what cannot be read, as typed
QString amounts(const QStringList& typed);    // "4:00 + 2:00"
inline const QString nothingRecorded = QStringLiteral("Nothing was recorded");
inline const QString gap = QStringLiteral(" \u00b7 "); // between what is said

} // namespace Said
} // namespace tallyroom
