// Deleting what an audit line shows.
#pragma once

#include "audit/AuditEntries.h"

namespace tallyroom {

// Removes the transactions that the line's action wrote and marks its audit entries as deleted.
// Both are found by value, not by key: all transactions of the employee and day with that number of
// minutes, all entries of the employee, day, action, minutes and user. Only "Accepted" and
// "Declined" without a rate name a column of the time history; any other action text makes the
// first statement fail, with nothing changed. The two statements stand on their own, but neither
// runs for a code or user with an apostrophe (3075), nor while either file is in use, read-only or
// gone. Raises what the database raises, and 13 for cells that do not read as dates or a time.
void deleteAuditLine(const QString& dataPath, const AuditEntries::Line& line);

} // namespace tallyroom
