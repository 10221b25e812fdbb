#include "store/sqlite/SqliteRows.h"

#include "store/engine/FieldValue.h"
#include "store/sqlite/SqliteDialect.h"

namespace tallyroom {

void writeSqliteRows(SqliteConnection& connection, const sql::CatalogTable& table,
                     const std::vector<sql::CatalogColumn>& columns, const std::vector<Row>& rows) {
    QStringList names;
    for (const sql::CatalogColumn& column : columns)
        names << column.name;
    SqliteQuery query(connection, sqliteGenerator().insertRowOrSkip(table, names));
    for (const Row& row : rows) {
        for (std::size_t at = 0; at < columns.size(); ++at)
            query.bind(static_cast<int>(at) + 1,
                       insertedValue(row.at(at), columns[at].type, columns[at].width));
        query.next();
        query.again();
    }
}

} // namespace tallyroom
