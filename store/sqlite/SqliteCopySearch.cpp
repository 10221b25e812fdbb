#include "store/sqlite/SqliteCopySearch.h"

#include "store/sql/Scope.h"
#include "store/sql/StatementBinder.h"
#include "store/sqlite/SqliteDialect.h"
#include "store/sqlite/SqliteRows.h"

#include <algorithm>

namespace tallyroom {

namespace {

// Criteria over copied rows cannot look into tables.
class NoTables final : public sql::Catalog {
public:
    std::shared_ptr<const sql::CatalogTable> findTable(const QString&) const override {
        return nullptr;
    }
    std::shared_ptr<const sql::CatalogTable> findTargetTable(const QString&) const override {
        return nullptr;
    }
    QStringList tableNames() const override { return {}; }
    bool keepsTextsCaseBlind() const override { return true; }
};

QString definition(const sql::CatalogColumn& column) {
    return column.type == sql::ValueType::Text
               ? column.name + QStringLiteral(" TEXT COLLATE NOCASE")
               : column.name;
}

} // namespace

SqliteCopySearch::SqliteCopySearch(const std::vector<sql::BoundColumn>& columns,
                                   const std::vector<Row>& rows)
    : m_connection(QString()) {
    createTable(columns);
    fill(rows);
}

void SqliteCopySearch::createTable(const std::vector<sql::BoundColumn>& columns) {
    auto table = std::make_shared<sql::CatalogTable>();
    table->place = QStringLiteral("main");
    table->name = QStringLiteral("copy");
    QStringList definitions;
    for (const sql::BoundColumn& column : columns) {
        const QString name = QStringLiteral("c%1").arg(table->columns.size());
        table->columns.push_back({name, column.value->type, column.value->width});
        definitions << definition(table->columns.back());
    }
    m_select.source = sql::BoundSource{table, QStringLiteral("t1")};
    const sql::TableScope scope(*m_select.source, table->name, nullptr);
    for (std::size_t i = 0; i < columns.size(); ++i)
        m_select.columns.push_back({columns[i].name, scope.column(i)});
    m_connection.run(
        QStringLiteral("CREATE TABLE copy (%1)").arg(definitions.join(QStringLiteral(", "))));
}

void SqliteCopySearch::fill(const std::vector<Row>& rows) {
    QStringList names;
    for (const sql::CatalogColumn& column : m_select.source->table->columns)
        names << column.name;
    const QString insert = sqliteGenerator().insertRow(*m_select.source->table, names);
    m_connection.run(QStringLiteral("BEGIN"));
    for (const std::vector<Variant>& row : rows) {
        SqliteQuery query(m_connection, insert);
        query.bindAll(row);
        query.next();
    }
    m_connection.run(QStringLiteral("COMMIT"));
}

// A search for one value is mostly one of many.
void SqliteCopySearch::indexFor(const sql::BoundNode& condition) {
    const bool listed = condition.kind == sql::BoundKind::InList; // one value's spellings, too
    if (!listed && !condition.applies(sql::Operation::Equal))
        return;
    const sql::BoundNode* left = condition.operands.front().get();
    if (left->applies(sql::Operation::CaseBlind))
        left = left->operands.front().get();
    if (left->kind == sql::BoundKind::Column)
        m_connection.run(
            QStringLiteral("CREATE INDEX IF NOT EXISTS index_%1 ON copy (%1)").arg(left->column));
}

int SqliteCopySearch::find(const sql::Expression& criteria) {
    const sql::BoundPtr condition = sql::bindCriteria(NoTables(), m_select, criteria);
    indexFor(*condition);
    SqliteQuery query(m_connection, sqliteGenerator().keysWhere(m_select, condition));
    qint64 first = 0;
    while (query.next())
        first = first == 0 ? query.key(0) : std::min(first, query.key(0));
    return static_cast<int>(first) - 1;
}

std::unique_ptr<CopySearch> makeSqliteCopySearch(const std::vector<sql::BoundColumn>& columns,
                                                 const std::vector<Row>& rows) {
    return std::make_unique<SqliteCopySearch>(columns, rows);
}

} // namespace tallyroom
