// What becomes of an old file's value in a column of ours.
#pragma once

#include "host/oldfiles/OldValue.h"
#include "store/Database.h"

namespace tallyroom::host {

enum class OldChange {
    None,
    Cut,         // a text to its column's width
    Cleaned,     // of characters that cannot be kept, or that its code page does not have
    Rounded,     // a number to what its column can hold, a moment to the second
    Unconverted, // there is no value now
};

struct ConvertedValue {
    Variant value; // fits its column
    OldChange change = OldChange::None;
};

// By the rules of the old run time. Types other than the value's own are no change as long as
// nothing is lost.
ConvertedValue converted(const OldValue& value, const TableFormat::Column& column);

// As a report shows it: texts in quotation marks, long ones in part.
QString shown(const OldValue& value);
QString shown(const Variant& value);

// "cut", "rounded" …
QString changeName(OldChange change);

} // namespace tallyroom::host
