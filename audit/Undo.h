// Taking back recorded answers.
#pragma once

#include <QString>
#include <QStringList>

namespace tallyroom {

struct HostContext;

namespace Undo {

// The lines that the user may see: the own ones, for the master everybody's; by canvass date and
// employee. Entries that were deleted are listed too, as accepted ones. Raises what the database
// raises.
QStringList lines(const HostContext& context, bool breakOut);

// Takes back the answer that a line shows: removes its audit entry and, if there still is one, one
// transaction of that employee, day and number of minutes. Only entries that were recorded under
// the current user's own name are searched, also for the master. Without such an entry nothing
// happens.
void take(const HostContext& context, const QString& line, bool breakOut);

} // namespace Undo
} // namespace tallyroom
