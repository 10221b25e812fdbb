// Writing rows so that one which a table refuses keeps out no other, as the engine would.
#pragma once

#include "common/RunError.h"
#include "store/postgres/PostgresSession.h"
#include "store/sql/Bound.h"

namespace tallyroom {

// A row that a table's rules refuse, as against a statement or a server that fails.
bool isRefusal(const RunError& error);

// Each skips refused rows and raises other failures. A transaction is open.
void updateOneByOne(PostgresSession& session, const sql::BoundUpdate& statement);
void insertOneByOne(PostgresSession& session, const sql::CatalogTable& table,
                    const QStringList& columns, const std::vector<Row>& rows);
// The same in one round trip, unless one is refused.
void insertAtOnce(PostgresSession& session, const sql::CatalogTable& table,
                  const QStringList& columns, const std::vector<Row>& rows);

} // namespace tallyroom
