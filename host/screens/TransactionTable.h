// The rows of the time history.
#pragma once

#include "host/screens/ScreenTable.h"
#include "reports/Period.h"

namespace tallyroom::host {

// By day, then by employee; an empty code stands for all employees.
TextTable transactionTable(Database& database, const HostData& data, const QString& employeeCode,
                           const Period& period);

} // namespace tallyroom::host
