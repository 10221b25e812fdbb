// What an engine has kept, as a value of the type that a column is declared with.
#pragma once

#include "common/Variant.h"
#include "store/sql/Operation.h"

namespace tallyroom {

// A Long when it fits, else a Double.
Variant wholeNumber(double number);

// What is no value of the type, a number beyond the dates, say, comes back as it is kept.
Variant typedNumber(double number, sql::ValueType type);
Variant typedText(const QString& text, sql::ValueType type);

} // namespace tallyroom
