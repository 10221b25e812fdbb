// Writing many rows of one table.
#pragma once

#include "store/Database.h"
#include "store/SqliteConnection.h"
#include "store/sql/Catalog.h"

namespace tallyroom {

class SqliteRows {
public:
    // `connection` and `table` must outlive this. Raises 3127 for a column that is not the table's.
    SqliteRows(SqliteConnection& connection, const sql::CatalogTable& table,
               const QStringList& columns);

    // See Database::replaceRows(). A transaction must be open.
    void replaceBy(const std::vector<Row>& rows);

private:
    void insert(SqliteQuery& query, const Row& row) const;

    SqliteConnection& m_connection;
    const sql::CatalogTable& m_table;
    std::vector<sql::CatalogColumn> m_columns;
    QString m_insertText;
};

} // namespace tallyroom
