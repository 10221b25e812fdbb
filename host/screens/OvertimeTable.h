// Overtime worked and answered, added up over a period.
#pragma once

#include "host/screens/ScreenTable.h"
#include "reports/Period.h"

namespace tallyroom::host {

enum class OvertimeGrouping { Department, Employee };

// One line for each department or employee with any overtime, then a line with the sums.
TextTable overtimeTable(Database& database, const HostData& data, const Period& period,
                        OvertimeGrouping grouping);

} // namespace tallyroom::host
