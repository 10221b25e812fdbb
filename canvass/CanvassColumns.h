// The columns of the board and the texts in their cells.
#pragma once

#include "canvass/CanvassOptions.h"
#include "common/Variant.h"

#include <QString>
#include <vector>

namespace tallyroom {

enum class CellKind {
    Text,   // as stored
    Phone,  // see FormatPhone()
    Day,    // mm/dd/yyyy
    Number, // blank for zero if the option says so
    Time    // minutes as hours and minutes; blank for zero likewise
};

struct CanvassColumn {
    QString header;
    QString field; // column of tlyrTemp
    CellKind kind;

    bool isRightAligned() const { return kind == CellKind::Number || kind == CellKind::Time; }
};

// The columns to show, from left to right.
std::vector<CanvassColumn> canvassColumns(const CanvassOptions& options);

// A Null shows as an empty cell, and so does what cannot be read.
QString cellText(const CanvassColumn& column, const Variant& value, bool blankForZero);

// "5551234567" as "(555) 123-4567", "5551234" as "555-1234". A number that holds a dash already
// gets a second one, as users of the board know it.
QString FormatPhone(const QString& phone);

} // namespace tallyroom
