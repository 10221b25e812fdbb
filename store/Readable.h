// What can be read of a value that another program wrote: the engine underneath keeps anything in
// any column, and one bad row is no reason to show none.
#pragma once

#include "common/Variant.h"

#include <optional>

namespace tallyroom::Readable {

// The text that a row is found by; "" for a Null. Nothing for bytes, and for a text with a NUL,
// after which an engine reads no further, or with bytes that were no character. Such a row is left
// out.
std::optional<QString> key(const Variant& value);

// The value for a cell of a row that is shown all the same: what cannot be read is as a Null is.
QString text(const Variant& value);   // "" for bytes and Null
Variant date(const Variant& value);   // a Date of the years 100 to 9999, or Null
Variant number(const Variant& value); // a Long, or Null

} // namespace tallyroom::Readable
