// Reading the audit.
#pragma once

#include "common/Variant.h"

#include <QString>
#include <QStringList>
#include <functional>

namespace tallyroom {

namespace AuditEntries {

// The cells of one entry, by their column.
using Line = QStringList;
enum Column { SystemDate, Code, Name, User, CanvassDate, Action, Time, columnCount };

QStringList headings();

// The users who recorded anything and can be read, each once. All routines raise what the database
// raises.
QStringList users(const QString& dataPath);

// Calls `take` with each entry that the condition selects, by time of recording and employee.
// Entries of employees whom the host's filter leaves out are passed over, and so are those whose
// code cannot be read: the window has no place to count them. Another cell that cannot be read is
// empty. `breakOut` adds the rate to the action.
void read(const QString& dataPath, const QString& employeeFilter, const QString& condition,
          bool breakOut, const std::function<void(const Line&)>& take);

// "Accepted", "Declined" or "Deleted", followed by the rate of the history column when asked for
// and there is one; "" for any other action.
QString actionText(const Variant& action, const QString& historyColumn, bool breakOut);

} // namespace AuditEntries
} // namespace tallyroom
