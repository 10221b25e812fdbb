#include "store/sqlite/SqliteCatalog.h"

#include "store/engine/SchemaTypes.h"
#include "store/sqlite/SqliteTypes.h"

namespace tallyroom {

std::shared_ptr<const sql::CatalogTable> SqliteCatalog::findTable(const QString& name) const {
    return find(ownPlace, name);
}

std::shared_ptr<const sql::CatalogTable> SqliteCatalog::findTargetTable(const QString& name) const {
    return find(m_insertPlace, name);
}

QStringList SqliteCatalog::tableNames() const {
    SqliteQuery query(m_connection,
                      QStringLiteral("SELECT name FROM pragma_table_list WHERE schema = ?1 AND "
                                     "type = 'table' AND name NOT LIKE 'sqlite!_%' ESCAPE '!' "
                                     "ORDER BY name"));
    query.bind(1, Variant(ownPlace));
    QStringList names;
    while (query.next())
        names << query.text(0);
    return names;
}

qint64 SqliteCatalog::version(const QString& place) const {
    SqliteQuery query(m_connection, QStringLiteral("PRAGMA %1.schema_version").arg(place));
    query.next();
    return query.key(0);
}

std::shared_ptr<const sql::CatalogTable> SqliteCatalog::find(const QString& place,
                                                             const QString& name) const {
    if (place != ownPlace)
        return read(place, name);
    const qint64 current = version(place);
    Entry& entry = m_tables[name.toLower()];
    if (!entry.table || entry.version != current)
        entry = {current, read(place, name)};
    return entry.table;
}

std::shared_ptr<const sql::CatalogTable> SqliteCatalog::read(const QString& place,
                                                             const QString& name) const {
    SqliteQuery query(m_connection, QStringLiteral("SELECT name, type, wr FROM pragma_table_list"
                                                   " WHERE schema = ?1 AND name = ?2 COLLATE NOCASE"
                                                   " AND name NOT LIKE 'sqlite!_%' ESCAPE '!'"));
    query.bind(1, Variant(place));
    query.bind(2, Variant(name));
    if (!query.next())
        return nullptr;
    auto table = std::make_shared<sql::CatalogTable>();
    table->place = place;
    table->name = query.text(0);
    table->keyed = query.text(1) == QLatin1String("table") && query.key(2) == 0;
    readColumns(*table);
    table->keepsWhatIsWritten = table->keyed && !hasRules(*table) && !hasDefaults(*table);
    return table;
}

// On the safe side: a column that is called "check" counts as a rule.
bool SqliteCatalog::hasRules(const sql::CatalogTable& table) const {
    SqliteQuery query(m_connection,
                      QStringLiteral("SELECT 1 FROM %1.sqlite_master WHERE tbl_name = ?1 COLLATE "
                                     "NOCASE AND (type = 'trigger' OR type = 'index' AND (sql IS "
                                     "NULL OR sql LIKE '%UNIQUE%') OR type = 'table' AND (sql LIKE "
                                     "'%CHECK%' OR sql LIKE '%NOT%' OR sql LIKE '%UNIQUE%' OR sql "
                                     "LIKE '%KEY%' OR sql LIKE '%REFERENCES%'))")
                          .replace(QLatin1String("%1"), table.place));
    query.bind(1, Variant(table.name));
    return query.next();
}

bool SqliteCatalog::hasDefaults(const sql::CatalogTable& table) const {
    SqliteQuery query(m_connection,
                      QStringLiteral("SELECT 1 FROM pragma_table_info(?1, ?2) WHERE dflt_value IS "
                                     "NOT NULL"));
    query.bind(1, Variant(table.name));
    query.bind(2, Variant(table.place));
    return query.next();
}

void SqliteCatalog::readColumns(sql::CatalogTable& table) const {
    SqliteQuery query(m_connection,
                      QStringLiteral("SELECT name, type FROM pragma_table_info(?1, ?2)"));
    query.bind(1, Variant(table.name));
    query.bind(2, Variant(table.place));
    while (query.next()) {
        const ColumnFormat format = formatOfDeclaredType(query.text(1));
        table.columns.push_back({query.text(0), valueType(format.type), format.width});
    }
}

} // namespace tallyroom
