// Formatting of values with the old run time's pictures.
#pragma once

#include "common/Variant.h"

namespace tallyroom {

// Formats with "00", "###00.00" (numbers), "!@@@@@@@@@" (texts) or a date picture; see Dates.
// Null and Empty give "". What suits the picture in no way, a number beyond all dates, say, is
// returned as the text that it is.
QString formatValue(const Variant& value, const QString& picture);

} // namespace tallyroom
