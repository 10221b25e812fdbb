#include "store/postgres/PostgresCatalog.h"

#include "store/postgres/PostgresSchema.h"

namespace tallyroom {

namespace {

// A line a column, the tables' own first. Other programs' tables may lack the key column, which is
// kept from callers; such a table is read, but its rows are not found again.
const QString query = QStringLiteral(R"(
    SELECT c.relname, a.attname, t.typname, a.atttypmod,
           EXISTS (SELECT FROM pg_attribute k WHERE k.attrelid = c.oid AND k.attname = 'tr_key'),
           c.relkind <> 'r' OR c.relhastriggers OR c.relhasrules OR c.relrowsecurity
           OR EXISTS (SELECT FROM pg_attribute d WHERE d.attrelid = c.oid AND d.attnum > 0
                      AND d.attname <> 'tr_key' AND (d.atthasdef OR d.attnotnull
                                                     OR d.attidentity <> ''))
           OR EXISTS (SELECT FROM pg_index i WHERE i.indrelid = c.oid
                      AND i.indisunique AND NOT i.indisprimary)
           OR EXISTS (SELECT FROM pg_constraint k WHERE k.conrelid = c.oid AND k.contype <> 'p')
    FROM pg_namespace n
    LEFT JOIN pg_class c ON c.relnamespace = n.oid AND c.relkind IN ('r', 'p', 'v', 'm', 'f')
    LEFT JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped
    LEFT JOIN pg_type t ON t.oid = a.atttypid
    WHERE CASE WHEN $1 = 'pg_temp' THEN n.oid = pg_my_temp_schema() ELSE n.nspname = $1 END
    ORDER BY c.relname, a.attnum)");

enum Column { Table, Name, Type, Modifier, Keyed, Ruled };

struct TypeName {
    QLatin1StringView name;
    sql::ValueType type;
};

// What is not listed is read as a text.
constexpr TypeName typeNames[] = {
    {QLatin1StringView("yesno"), sql::ValueType::Boolean},
    {QLatin1StringView("int2"), sql::ValueType::Long},
    {QLatin1StringView("int4"), sql::ValueType::Long},
    {QLatin1StringView("int8"), sql::ValueType::Long},
    {QLatin1StringView("float4"), sql::ValueType::Double},
    {QLatin1StringView("float8"), sql::ValueType::Double},
    {QLatin1StringView("numeric"), sql::ValueType::Double},
    {QLatin1StringView("date"), sql::ValueType::Date},
    {QLatin1StringView("timestamp"), sql::ValueType::Date},
    {QLatin1StringView("timestamptz"), sql::ValueType::Date},
};

sql::CatalogColumn columnOf(const PostgresResult& rows, int row) {
    const QString type = rows.text(row, Type);
    sql::CatalogColumn column{rows.text(row, Name), sql::ValueType::Text, 0};
    for (const TypeName& known : typeNames) {
        if (type == known.name)
            column.type = known.type;
    }
    const bool hasWidth = type == QLatin1String("varchar") || type == QLatin1String("bpchar");
    constexpr qint64 header = 4; // counted in, as the engine's catalog says
    if (hasWidth && rows.key(row, Modifier) > header)
        column.width = static_cast<int>(rows.key(row, Modifier) - header);
    return column;
}

} // namespace

const std::optional<PostgresTables::Tables>& PostgresTables::tables(const QString& schema) {
    const auto known = m_schemas.constFind(schema);
    if (known != m_schemas.constEnd())
        return *known;
    const PostgresResult rows = m_connection.run(query, {Variant(schema)});
    std::optional<Tables>& tables = m_schemas[schema];
    if (rows.rows() == 0)
        return tables;
    tables.emplace();
    std::shared_ptr<sql::CatalogTable> table;
    for (int row = 0; row < rows.rows() && !rows.isNull(row, Table); ++row) {
        if (const QString name = rows.text(row, Table); !table || table->name != name) {
            table = std::make_shared<sql::CatalogTable>();
            table->place = schema;
            table->name = name;
            table->keyed = rows.text(row, Keyed) == QLatin1String("t");
            table->keepsWhatIsWritten = table->keyed && rows.text(row, Ruled) == QLatin1String("f");
            tables->insert(name.toLower(), table);
        }
        if (!rows.isNull(row, Name) && rows.text(row, Name) != QLatin1String("tr_key"))
            table->columns.push_back(columnOf(rows, row));
    }
    return tables;
}

std::shared_ptr<const sql::CatalogTable> PostgresTables::find(const QString& schema,
                                                              const QString& name) {
    const std::optional<Tables>& found = tables(schema);
    return found ? found->value(name.toLower()) : nullptr;
}

bool PostgresTables::hasSchema(const QString& schema) {
    return tables(schema).has_value();
}

QStringList PostgresTables::names(const QString& schema) {
    const PostgresResult rows = m_connection.run(
        QStringLiteral("SELECT relname FROM pg_class WHERE relnamespace = (SELECT oid FROM "
                       "pg_namespace WHERE nspname = $1) AND relkind IN ('r', 'p') AND NOT "
                       "relispartition ORDER BY relname"),
        {Variant(schema)});
    QStringList names;
    for (int row = 0; row < rows.rows(); ++row)
        names << rows.text(row, 0);
    return names;
}

QStringList PostgresCatalog::tableNames() const {
    return m_tables.names(m_schema);
}

std::shared_ptr<const sql::CatalogTable> PostgresCatalog::find(const QString& schema,
                                                               const QString& name) const {
    if (auto table = m_tables.find(schema, name))
        return table;
    return hasOwnTables(schema) ? m_tables.find(ownSchema, name) : nullptr;
}

std::shared_ptr<const sql::CatalogTable> PostgresCatalog::findTable(const QString& name) const {
    return find(m_schema, name);
}

std::shared_ptr<const sql::CatalogTable>
PostgresCatalog::findTargetTable(const QString& name) const {
    return find(m_target, name);
}

} // namespace tallyroom
