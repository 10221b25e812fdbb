#include "store/sqlite/SqliteKeyedRows.h"

#include "store/sqlite/SqliteDialect.h"

#include <sqlite3.h>

namespace tallyroom {

SqliteKeyedRows::SqliteKeyedRows(SqliteConnection& connection, const sql::BoundSelect& query)
    : m_connection(connection), m_query(query), m_readText(sqliteGenerator().rowsByKey(query)) {}

std::vector<qint64> SqliteKeyedRows::keysOf(const sql::Native& native) {
    std::vector<qint64> keys;
    SqliteQuery query(m_connection, native);
    while (query.next())
        keys.push_back(query.key(0));
    return keys;
}

std::vector<qint64> SqliteKeyedRows::keys() {
    return keysOf({sqliteGenerator().keys(m_query), {}});
}

std::vector<qint64> SqliteKeyedRows::find(const sql::BoundPtr& criteria) {
    return keysOf(sqliteGenerator().keysWhere(m_query, criteria));
}

std::optional<Row> SqliteKeyedRows::read(qint64 key) {
    SqliteQuery query(m_connection, m_readText);
    query.bind(1, key);
    if (!query.next())
        return std::nullopt;
    return query.row(m_query.columns, 1);
}

qint64 SqliteKeyedRows::insert(const QStringList& columns, const Row& values) {
    SqliteQuery query(m_connection, sqliteGenerator().insertRow(*m_query.source->table, columns));
    query.bindAll(values);
    query.next();
    return sqlite3_last_insert_rowid(m_connection.handle());
}

// A recordset that writes many rows mostly writes the same columns of each.
bool SqliteKeyedRows::update(qint64 key, const QStringList& columns, const Row& values) {
    if (m_updated != columns) {
        m_updateText = sqliteGenerator().updateRow(*m_query.source->table, columns);
        m_updated = columns;
    }
    SqliteQuery query(m_connection, m_updateText);
    query.bindAll(values);
    query.bind(static_cast<int>(values.size()) + 1, key);
    query.next();
    return hasChangedRow();
}

bool SqliteKeyedRows::remove(qint64 key) {
    SqliteQuery query(m_connection, sqliteGenerator().deleteRow(*m_query.source->table));
    query.bind(1, key);
    query.next();
    return hasChangedRow();
}

bool SqliteKeyedRows::hasChangedRow() const {
    return sqlite3_changes(m_connection.handle()) > 0;
}

} // namespace tallyroom
