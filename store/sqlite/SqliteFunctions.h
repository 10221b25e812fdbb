// The functions that translated statements call and that SQLite does not have.
#pragma once

struct sqlite3;

namespace tallyroom {

// Makes the functions of the dialect known to a connection: conversions between the store's types,
// Like patterns, joining of texts, and the guard of scalar subqueries; and its two orders of texts.
// Returns false on failure.
[[nodiscard]] bool registerSqliteFunctions(sqlite3* connection);

} // namespace tallyroom
