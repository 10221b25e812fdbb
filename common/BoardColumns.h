// The columns of the board: one table says of each what it shows, how it is chosen, and by what
// name an ordering sorts by it.
#pragma once

#include <QStringList>
#include <span>
#include <vector>

namespace tallyroom {

// What the View menu's check marks say about the board.
struct BoardOptions {
    bool blankForZero = false;     // mnuBlank0
    bool multiply = false;         // mnuMult
    bool breakOut = false;         // mnuBreakOut
    bool totalWithAccepted = true; // mnuTot item 0, else item 1
    QStringList columns;           // names of the checked entries of the Columns menu
};

enum class CellKind {
    Code,   // as stored, never cut on paper
    Text,   // as stored
    Phone,  // see FormatPhone()
    Day,    // mm/dd/yyyy
    Number, // blank for zero if the option says so
    Time    // minutes as hours and minutes; blank for zero likewise
};

struct BoardColumn {
    // The entry of the Columns menu that shows and hides it; without a name there is none.
    struct Entry {
        const char16_t* name = nullptr; // "mnuDept"
        const char16_t* caption = nullptr;
        bool checkedAtFirst = false;
    };
    enum class Shown { Always, BrokenOut, Together }; // as mnuBreakOut says
    // Another field takes the place of the column's own while an option is on.
    struct Substitute {
        bool BoardOptions::*option = nullptr;
        const char16_t* field = nullptr;
    };

    const char16_t* header;
    const char16_t* field; // column of tlyrTemp, in any case
    CellKind kind;
    const char16_t* element = nullptr; // its name in an ordering; nullptr: not sorted by
    Entry entry = {};
    Shown shown = Shown::Always;
    Substitute substitute = {};

    bool isShown(const BoardOptions& options) const;
    QString fieldFor(const BoardOptions& options) const;
    bool isRightAligned() const { return kind == CellKind::Number || kind == CellKind::Time; }
};

namespace BoardColumns {

// From left to right.
std::span<const BoardColumn> all();
std::vector<const BoardColumn*> shown(const BoardOptions& options);
QStringList headersOf(CellKind kind);

// The elements of an ordering in their usual rank, which is that of their columns.
QStringList elements();
// The column of an element, whatever the case of its letters; nullptr when there is none.
const BoardColumn* ofElement(const QString& element);

} // namespace BoardColumns
} // namespace tallyroom
