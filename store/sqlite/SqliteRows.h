// Writing many rows of one table.
#pragma once

#include "store/Database.h"
#include "store/sql/Catalog.h"
#include "store/sqlite/SqliteConnection.h"

namespace tallyroom {

// See EngineDatabase::writeRows().
void writeSqliteRows(SqliteConnection& connection, const sql::CatalogTable& table,
                     const std::vector<sql::CatalogColumn>& columns, const std::vector<Row>& rows);

} // namespace tallyroom
