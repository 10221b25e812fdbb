// What the tests of the store ask again and again.
#pragma once

#include "tests/support/DataFolder.h"
#include "tests/support/Printing.h"

namespace tallyroom {

// The folder as a host writes it, with "\".
QString hostPath(const DataFolder& folder);

// 'a text', 12, 1.5d for a Double, #1/2/2008#, True, Null.
QString shown(const Variant& value);
// All rows from the current one on; values are joined by " | ".
QStringList rowsOf(Recordset& recordset);

} // namespace tallyroom
