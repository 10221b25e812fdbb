// The two queries from which the board's rows are made.
#pragma once

#include "setup/TotallingPeriod.h"

#include <QString>
#include <optional>

namespace tallyroom::BoardStatements {

// Both run on bcx.mdb. `filter` is the host's: what completes the condition "[Emp_Code] ".

// The employees with their default qualification. No semicolon: an Insert may stand before it.
QString employees(const QString& filter);

// One row for each employee with history in the period, which is without limits when there is none;
// by code. Position 0 is the code, 1 to 6 are the totals in minutes.
QString totals(const QString& filter, const std::optional<TotallingPeriod>& period);

} // namespace tallyroom::BoardStatements
