// What each employee came to in the weeks before a period.
#pragma once

#include "reports/Period.h"

#include <vector>

namespace tallyroom {

struct WeeklyTotals {
    Period week;
    std::vector<double> minutes; // of each of the codes, zero for who has none
};

// Worked, accepted and declined overtime as the board totals it, unweighed, in so many weeks of
// seven days, the last of which ends on the day before `day`; the earliest first. `filter`
// completes the condition "[thist_emp] ". One query. Raises what the database raises.
std::vector<WeeklyTotals> weeklyTotals(Database& host, const QString& filter,
                                       const QStringList& codes, QDate day, int weeks);

} // namespace tallyroom
