// Overtime worked and answered, added up over a period.
#pragma once

#include "reports/Period.h"
#include "reports/Report.h"

namespace tallyroom::host {

enum class OvertimeGrouping { Department, Employee };

// One line for each department or employee, also for those without any, then a line with the sums.
ValueTable overtimeTable(Database& database, const HostData& data, const Period& period,
                         OvertimeGrouping grouping);

// The same as a report.
Report overtimeReport(Database& database, const HostData& data, const Period& period,
                      OvertimeGrouping grouping);

} // namespace tallyroom::host
