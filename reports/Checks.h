// The evening's check: what recording has left that somebody ought to look at.
#pragma once

#include "reports/Report.h"
#include "reports/ReportRequest.h"

namespace tallyroom {

// Looks at the answers recorded on the days of the period, without one the last two weeks in which
// anything was recorded, and at the codes that recording needs. A line for each finding says what
// to do; `findings` counts them. Raises what the database raises; throws Cancelled.
Report checksReport(const QString& dataFolder, const ReportRequest& request,
                    const ReportProgress& progress);

} // namespace tallyroom
