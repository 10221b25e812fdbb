// Recording employees' answers to an offer of overtime.
#pragma once

#include "canvass/CanvassState.h"

#include <QStringList>

namespace tallyroom {

// An answer as the main window's controls give it.
struct AnswerRequest {
    bool accept = false;
    bool decline = false;
    QString comment;
    bool breakOut = false;
    bool multiply = false; // for the derived columns of the board
    QString amount;        // Text1: the overtime, or that at time and a half when broken out
    QString doubleAmount;  // Text2: the double time; used only when broken out
    QString canvassDate;   // to_date
    QString department;    // what goes into the transaction's department
    QString user;          // who records
    QStringList employees; // codes of the selected rows, from the upper to the lower one
};

namespace AnswerRecording {

// Whether a typed amount can be recorded: a time from 0 to 24 hours.
bool isValidAmount(const QString& amount);

// Writes, for each employee, an absence transaction into the host's TimeHistory, a row into the
// audit and the minutes into the employee's row of the board. Each of these writes stands on its
// own, and what was written before a failure stays. Employees who are not on the board, whose shift
// the host does not know, or whose kind of answer has no absent code are passed over silently.
// Raises what the database raises, and 13 for a canvass date that is none; `written` counts the
// transactions even then.
void record(CanvassState& state, const AnswerRequest& request, int& written);

} // namespace AnswerRecording
} // namespace tallyroom
