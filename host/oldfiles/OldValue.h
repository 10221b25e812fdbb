// What the files of the old desktop engine hold, before it becomes the store's.
#pragma once

#include "common/Dates.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <variant>
#include <vector>

namespace tallyroom::host {

// The types of the old format's columns, one of each kind of value.
enum class OldType : quint8 {
    Boolean,
    Whole,  // of one, two or four bytes
    Single, // kept with about seven digits
    Double,
    Decimal, // currency and numeric: digits as they are written, no rounding
    Date,
    Text, // up to OldColumn::width characters
    Memo,
    Guid,
    Binary, // bytes, and objects of other programs
};

struct OldColumn {
    QString name;
    OldType type = OldType::Text;
    int width = 0;
    friend bool operator==(const OldColumn&, const OldColumn&) = default;
};

struct OldTable {
    QString name;
    std::vector<OldColumn> columns;
    friend bool operator==(const OldTable&, const OldTable&) = default;
};

// A currency or numeric amount, "-1234.5600".
struct OldDecimal {
    QString digits;
    friend bool operator==(const OldDecimal&, const OldDecimal&) = default;
};

// No value; Boolean; Whole; Single and Double; Decimal; Date, which may be out of range; Text, Memo
// and Guid; Binary.
using OldValue =
    std::variant<std::monostate, bool, qint32, double, OldDecimal, Date, QString, QByteArray>;
using OldRow = std::vector<OldValue>; // a value of each column
using TakeOldRows = std::function<void(const std::vector<OldRow>&)>;

// Why a file cannot be read.
enum class OldRefusal : quint8 { Unreadable, Unknown, Password, Encrypted, Linked, Damaged };

// Thrown where a file turns out to be unreadable; the text is a sentence without the file's name.
struct OldFileRefused {
    OldRefusal reason;
    QString text;
};

} // namespace tallyroom::host
