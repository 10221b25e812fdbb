// What the server reports, as errors of the desktop engine.
#pragma once

#include "common/RunError.h"

#include <QByteArray>

struct pg_conn;
struct pg_result;

namespace tallyroom {

// In all of these `name` is the database that was worked on, without secrets.

// Of a statement. A code that has no number of its own becomes error 51 with the server's text.
RunError statementError(const pg_result* result, const QString& name);

// Of a connection that could not be opened: 3151 with the reason, 3029 (the login is refused) or
// 3033 (the database is not for this user). What these are for is known when the server is asked
// again, which is not worth it when it has been waited for in vain.
RunError openingError(pg_conn* connection, const QString& name, bool isAskedAgain);

// Whether the server ends the connection with this result.
bool isGoodbye(const pg_result* result);

} // namespace tallyroom
