// The employees whom a report is about.
#pragma once

#include "reports/ReportRequest.h"

namespace tallyroom {

// Completes the condition "[Emp_Code] ", for employees who are there.
QString groupFilter(const ReportGroup& group);

// "Department 20 Assembly", and so on; empty for everybody.
QStringList groupDetails(const ReportGroup& group, const HostData& data);

} // namespace tallyroom
