// How overtime is spread over a group of employees.
#pragma once

#include "reports/Report.h"
#include "reports/ReportRequest.h"

namespace tallyroom {

// Everybody of the group with the board's unweighed figures, who has nothing first; a bar each; the
// spread of the whole and of its parts by `request.groupBy`; and the spread of each of the twelve
// weeks before the period. Raises what the database raises; throws Cancelled.
Report fairnessReport(const QString& dataFolder, const ReportRequest& request,
                      const ReportProgress& progress);

} // namespace tallyroom
