// What the line under the board says.
#pragma once

#include <QString>

namespace tallyroom {

// Each is a note to read, or empty.
struct BoardStatus {
    QString command;    // what became of the last one
    bool stale = false; // answers are written that the figures do not count
    QString user;       // why this user's answers cannot be recorded
    QString period;     // why the totals are not those of the stored period
    QString employees;  // who is left out
    QString orderings;  // which are left out

    QString text() const; // all that there is to say, what is newest first
};

} // namespace tallyroom
