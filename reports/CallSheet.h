// A sheet to call from: who may be asked for an overtime, in what order.
#pragma once

#include "reports/Report.h"
#include "reports/ReportRequest.h"

namespace tallyroom {

// One line for each employee of the group in the order asked for: a place, how to reach him, the
// total, what is known of that day, and room to note the answer. Who is absent that day is left out
// and named in the notes. The order is the host's when none is asked for. Raises what the database
// raises; throws BadRequest for a day, an hour, an amount or an order that is none.
Report callSheet(const QString& dataFolder, const ReportRequest& request,
                 const ReportProgress& progress);

// Where the code of a line's employee stands.
inline constexpr std::size_t callSheetCode = 1;

} // namespace tallyroom
