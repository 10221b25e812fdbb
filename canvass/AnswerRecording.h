// Recording employees' answers to an offer of overtime.
#pragma once

#include "audit/Standing.h"
#include "canvass/CanvassState.h"
#include "common/AnswerKind.h"

#include <QStringList>
#include <optional>
#include <vector>

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
    // The board as it is shown; without it, where the employees stood is not kept.
    std::optional<Standing::Snapshot> board;
};

namespace AnswerRecording {

// Whether a typed amount can be recorded: a time from 0 to 24 hours.
[[nodiscard]] bool isValidAmount(const QString& amount);

struct Result {
    int employees = 0;                       // whom the request names
    int recorded = 0;                        // of these, whose answer is written in full
    int unlisted = 0;                        // passed over: no longer on the board
    int withoutRule = 0;                     // passed over: the host does not know the shift
    QStringList amounts;                     // as typed, of the kinds of answer that are set up
    std::vector<const AnswerKind*> notSetUp; // kinds asked for that have no absent code
    std::optional<QString> partly;           // the code of who has not all writes of the answer
    std::optional<RunError> failure;         // what ended the command before its end
    std::optional<RunError> standing;        // why it is not kept where they stood, or not of all

    bool anyWritten() const { return recorded > 0 || partly.has_value(); }
};

// Writes, for each employee, an absence transaction into the host's TimeHistory, a row into the
// audit and the minutes into the employee's row of the board. Each of these writes stands on its
// own, and what was written before a failure stays; but all that can be told before the first of
// them is told then, and nothing is written of that answer: a text that no statement can hold, and
// a file that is in use, read-only, gone or exchanged. Employees who are not on the board, whose
// shift the host does not know, or whose kind of answer has no absent code are passed over and
// counted. Where they stood is kept with the audit's row; what hinders that hinders nothing else.
// Fails with what the database raises, and 13 for a canvass date that is none. `progress`
// is told how many are done; it neither uses a database nor throws.
using Progress = std::function<void(int done, int of)>;
[[nodiscard]] Result record(CanvassState& state, const AnswerRequest& request,
                            const Progress& progress = {});

// What hinders every answer of this user, as a note to read; empty when nothing does.
QString hindranceOf(const QString& user);

} // namespace AnswerRecording
} // namespace tallyroom
