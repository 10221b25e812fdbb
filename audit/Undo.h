// Taking back recorded answers.
#pragma once

#include <QString>
#include <QStringList>

namespace tallyroom {

struct HostContext;

namespace Undo {

// The lines that the user may see: the own ones, for the master everybody's; by canvass date and
// employee. Entries that were deleted are listed too, as accepted ones. An entry whose employee
// code cannot be read is left out; another value that cannot is missing in its line, which then
// cannot be taken back. Both routines raise what the database raises, and 3075 for a user name with
// an apostrophe.
struct Lines {
    QStringList texts;
    int latest = -1;    // the line of what was recorded last; −1 without any
    int unreadable = 0; // entries left out
};
Lines lines(const HostContext& context, bool breakOut);

// The name of the employee whom a line shows, as the host has it; "" for one whom it does not have.
// Raises what the database raises, and 3075 for a code with an apostrophe.
QString employeeName(const HostContext& context, const QString& line);

// Takes back the answer that a line shows: removes its audit entry and, if there still is one, one
// transaction of that employee, day and number of minutes. Only entries that were recorded under
// the current user's own name and with a column of the time history are searched, also for the
// master. Without such an entry nothing happens. Raises 13 for a line without a date or a time.
void take(const HostContext& context, const QString& line, bool breakOut);

} // namespace Undo
} // namespace tallyroom
