// A report as lines of text.
#pragma once

#include "reports/Report.h"

namespace tallyroom {

// The title, and everything else in its turn; columns are padded to their widest text. A line is
// its points; bars show what the tables say, and are left out.
QString reportText(const Report& report);

} // namespace tallyroom
