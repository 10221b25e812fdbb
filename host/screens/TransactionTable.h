// The rows of the time history.
#pragma once

#include "reports/Period.h"
#include "reports/ValueTable.h"

namespace tallyroom::host {

// By day, then by employee; an empty code stands for all employees.
ValueTable transactionTable(Database& database, const HostData& data, const QString& employeeCode,
                            const Period& period);

} // namespace tallyroom::host
