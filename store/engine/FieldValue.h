// Values on their way into a field.
#pragma once

#include "common/Variant.h"
#include "store/sql/Operation.h"

namespace tallyroom {

// The value as a field of that type keeps it; `width` is in characters, 0 for any length. Raises
// 3421 for a value that does not convert, 3163 for a text that is too long.
Variant fieldValue(const Variant& value, sql::ValueType type, int width);

// The value as an Insert writes it into such a field: what does not convert becomes Null, and a
// text that is too long is cut.
Variant insertedValue(const Variant& value, sql::ValueType type, int width);

} // namespace tallyroom
