// What came of a call that was made from the sheet.
#pragma once

#include "audit/Contacts.h"
#include "reports/ReportRequest.h"

namespace tallyroom {

// Keeps an outcome for the employee of a line of the sheet that was asked for. Raises what the
// database raises; 3078 and 3192 say what adds the place for it to data that has none.
void recordOutcome(const QString& dataFolder, const ReportRequest& request, const Row& line,
                   const QString& user, Contacts::Outcome outcome, const QString& remark);

} // namespace tallyroom
