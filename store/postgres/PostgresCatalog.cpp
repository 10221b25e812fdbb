#include "store/postgres/PostgresCatalog.h"

#include "store/postgres/PostgresSchema.h"

namespace tallyroom {

namespace {

// A line a column, those of a table one after the other. Other programs' tables may lack the key
// column, which is kept from callers; such a table is read, but its rows are not found again.
const QString query = QStringLiteral(R"(
    SELECT CASE WHEN n.oid = pg_my_temp_schema() THEN 'pg_temp' ELSE n.nspname END,
           c.relname, a.attname, t.typname, a.atttypmod,
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
    WHERE n.nspname = ANY ($1::text[])
          OR n.oid = pg_my_temp_schema() AND 'pg_temp' = ANY ($1::text[])
    ORDER BY n.nspname, c.relname, a.attnum)");

enum Column { Place, Table, Name, Type, Modifier, Keyed, Ruled };

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

std::shared_ptr<sql::CatalogTable> tableOf(const PostgresResult& rows, int row) {
    auto table = std::make_shared<sql::CatalogTable>();
    table->place = rows.text(row, Place);
    table->name = rows.text(row, Table);
    table->keyed = rows.text(row, Keyed) == QLatin1String("t");
    table->keepsWhatIsWritten = table->keyed && rows.text(row, Ruled) == QLatin1String("f");
    return table;
}

} // namespace

// Another file that is not there may be made before it is asked for.
const std::optional<PostgresTables::Tables>& PostgresTables::tables(const QString& schema) {
    const auto known = m_schemas.constFind(schema);
    if (known != m_schemas.constEnd())
        return *known;
    const QStringList asked = unknownWith(schema);
    const PostgresResult columns = m_connection.run(query, {PostgresParameter(asked)});
    for (const QString& each : asked) {
        if (each == schema || each == ownSchema)
            m_schemas.insert(each, std::nullopt);
    }
    take(columns);
    return m_schemas[schema];
}

QStringList PostgresTables::unknownWith(const QString& schema) const {
    QStringList unknown{schema};
    for (const QString& other : m_together) {
        if (other != schema && !m_schemas.contains(other))
            unknown << other;
    }
    return unknown;
}

// A schema without tables gives one line.
void PostgresTables::take(const PostgresResult& columns) {
    std::shared_ptr<sql::CatalogTable> table;
    for (int row = 0; row < columns.rows(); ++row) {
        const QString place = columns.text(row, Place);
        std::optional<Tables>& tables = m_schemas[place];
        if (!tables)
            tables.emplace();
        if (columns.isNull(row, Table))
            continue;
        const QString name = columns.text(row, Table);
        if (!table || table->place != place || table->name != name) {
            table = tableOf(columns, row);
            tables->insert(name.toLower(), table);
        }
        if (!columns.isNull(row, Name) && columns.text(row, Name) != QLatin1String("tr_key"))
            table->columns.push_back(columnOf(columns, row));
    }
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
