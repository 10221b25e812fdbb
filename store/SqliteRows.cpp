#include "store/SqliteRows.h"

#include "store/FieldValue.h"
#include "store/SqliteGenerator.h"
#include "store/StoreErrors.h"

namespace tallyroom {

SqliteRows::SqliteRows(SqliteConnection& connection, const sql::CatalogTable& table,
                       const QStringList& columns)
    : m_connection(connection), m_table(table) {
    for (const QString& column : columns) {
        const int at = table.indexOf(column);
        if (at < 0)
            throw RunError::make(ErrorNumber::unknownInsertField, {column}, ErrorSource::database);
        m_columns.push_back(table.columns[static_cast<std::size_t>(at)]);
    }
    m_insertText = generator().insertRowOrSkip(table, columns);
}

void SqliteRows::replaceBy(const std::vector<Row>& rows) {
    m_connection.run(generator().deleteRows(
        {{std::make_shared<sql::CatalogTable>(m_table), QStringLiteral("t")}, nullptr}));
    SqliteQuery query(m_connection, m_insertText);
    for (const Row& row : rows)
        insert(query, row);
}

void SqliteRows::insert(SqliteQuery& query, const Row& row) const {
    for (std::size_t at = 0; at < m_columns.size(); ++at)
        query.bind(static_cast<int>(at) + 1,
                   insertedValue(row.at(at), m_columns[at].type, m_columns[at].width));
    query.next();
    query.again();
}

} // namespace tallyroom
