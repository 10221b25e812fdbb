// Why somebody was asked before somebody else: where an employee stood when his answer was given.
#pragma once

#include "reports/Report.h"
#include "reports/ReportRequest.h"

namespace tallyroom {

// Of each answer of the employee for the day: when and by whom it was recorded, the order in force,
// his place, who stood before him, who of them had been asked and who was passed over, in words.
// What was not kept with the answer is rebuilt from the time history, in the order asked for or by
// total, and the report says what that cannot know. Raises what the database raises; throws
// BadRequest for an employee who is not there and an ordering that is none.
Report standingReport(const QString& dataFolder, const ReportRequest& request,
                      const ReportProgress& progress);

} // namespace tallyroom
