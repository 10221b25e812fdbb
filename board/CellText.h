// The texts in the cells of the board.
#pragma once

#include "common/BoardColumns.h"
#include "common/Variant.h"

namespace tallyroom {

// A Null shows as an empty cell, and so does what cannot be read.
QString cellText(CellKind kind, const Variant& value, bool blankForZero);

// "5551234567" as "(555) 123-4567", "5551234" as "555-1234". A number that holds a dash already
// gets a second one, as users of the board know it.
QString FormatPhone(const QString& phone);

} // namespace tallyroom
