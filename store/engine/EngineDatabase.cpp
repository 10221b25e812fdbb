#include "store/engine/EngineDatabase.h"

#include "store/ErrorSource.h"
#include "store/Schema.h"
#include "store/engine/Dynaset.h"
#include "store/engine/SchemaTypes.h"
#include "store/engine/Snapshot.h"
#include "store/sql/Parser.h"
#include "store/sql/StatementBinder.h"

#include <algorithm>

namespace tallyroom {

namespace {

sql::SelectStatement allColumnsOf(const QString& table) {
    sql::SelectStatement select;
    select.items.emplace_back();
    select.from = sql::TableReference{table, table};
    return select;
}

QString unbracketed(const QString& name) {
    const QString trimmed = name.trimmed();
    return trimmed.startsWith(u'[') ? trimmed.sliced(1, trimmed.size() - 2) : trimmed;
}

// A table's name alone stands for all its rows.
sql::SelectStatement parseSelect(const QString& text) {
    if (sql::isTableName(text))
        return allColumnsOf(unbracketed(text));
    sql::Statement statement = sql::parseStatement(text);
    if (auto* select = std::get_if<sql::SelectStatement>(&statement))
        return std::move(*select);
    throw RunError::make(ErrorNumber::invalidOperation);
}

RecordsetQuery queryOf(const QString& text, RecordsetType type) {
    return {std::make_shared<const sql::SelectStatement>(parseSelect(text)), nullptr, type};
}

std::vector<sql::CatalogColumn> columnsOf(const sql::CatalogTable& table,
                                          const QStringList& names) {
    std::vector<sql::CatalogColumn> columns;
    for (const QString& name : names) {
        const int at = table.indexOf(name);
        if (at < 0)
            throw RunError::make(ErrorNumber::unknownInsertField, {name}, ErrorSource::database);
        columns.push_back(table.columns[static_cast<std::size_t>(at)]);
    }
    return columns;
}

} // namespace

void EngineDatabase::requireOpen() {
    if (!isOpen())
        throw RunError::make(ErrorNumber::objectInvalid, {}, ErrorSource::database);
}

void EngineDatabase::execute(const QString& sql) {
    requireOpen();
    std::visit([this](const auto& statement) { runStatement(statement); },
               sql::parseStatement(sql));
}

void EngineDatabase::runStatement(const sql::SelectStatement&) {
    throw RunError::make(ErrorNumber::notASelect);
}

void EngineDatabase::runStatement(const sql::DeleteStatement& statement) {
    run(sql::bindDelete(catalog(), statement));
}

void EngineDatabase::runStatement(const sql::UpdateStatement& statement) {
    run(sql::bindUpdate(catalog(), statement));
}

void EngineDatabase::runStatement(const sql::DropStatement& statement) {
    run(sql::bindDrop(catalog(), statement));
}

void EngineDatabase::runStatement(const sql::InsertStatement& statement) {
    if (!statement.file.isEmpty())
        return insertInto(statement);
    run(sql::bindInsert(catalog(), statement));
}

std::shared_ptr<Recordset> EngineDatabase::openRecordset(const QString& sql, RecordsetType type) {
    requireOpen();
    return open(queryOf(sql, type));
}

std::vector<std::shared_ptr<Recordset>>
EngineDatabase::openSnapshots(const QStringList& statements) {
    requireOpen();
    std::vector<RecordsetQuery> queries;
    std::vector<sql::BoundSelect> bound;
    for (const QString& statement : statements) {
        queries.push_back(queryOf(statement, RecordsetType::Snapshot));
        bound.push_back(bind(queries.back()));
    }
    std::vector<std::vector<Row>> rows = readAll(bound);
    const auto self = std::static_pointer_cast<EngineDatabase>(shared_from_this());
    std::vector<std::shared_ptr<Recordset>> opened;
    for (std::size_t at = 0; at < queries.size(); ++at) {
        auto copy = std::make_shared<Snapshot>(self, queries[at], std::move(bound[at]));
        copy->startWith(std::move(rows[at]));
        opened.push_back(std::move(copy));
    }
    return opened;
}

std::vector<std::vector<Row>>
EngineDatabase::readAll(const std::vector<sql::BoundSelect>& queries) {
    std::vector<std::vector<Row>> all;
    for (const sql::BoundSelect& query : queries)
        all.push_back(readRows(query));
    return all;
}

sql::BoundSelect EngineDatabase::bind(const RecordsetQuery& query) {
    return sql::bindSelect(catalog(), *query.select, query.sort.get());
}

std::shared_ptr<Recordset> EngineDatabase::open(const RecordsetQuery& query) {
    sql::BoundSelect bound = bind(query);
    const auto self = std::static_pointer_cast<EngineDatabase>(shared_from_this());
    std::shared_ptr<EngineRecordset> recordset;
    if (query.type == RecordsetType::Dynaset && bound.updatable())
        recordset = std::make_shared<Dynaset>(self, query, std::move(bound));
    else
        recordset = std::make_shared<Snapshot>(self, query, std::move(bound));
    recordset->start();
    return recordset;
}

bool EngineDatabase::keepsWhatIsWritten(const Schema::Table& table) {
    const auto known = catalog().findTable(QString::fromUtf16(table.name));
    const auto isKept = [&](const Schema::Column& column) {
        const int at = known->indexOf(QString::fromUtf16(column.name));
        if (at < 0)
            return false;
        const sql::CatalogColumn& found = known->columns[static_cast<std::size_t>(at)];
        return found.type == valueType(column.type) && found.width == column.width;
    };
    return known && known->keepsWhatIsWritten &&
           std::all_of(table.columns.begin(), table.columns.end(), isKept);
}

std::vector<TableFormat> EngineDatabase::tables() {
    const sql::Catalog& all = catalog();
    std::vector<TableFormat> formats;
    for (const QString& name : all.tableNames()) {
        const auto table = all.findTable(name);
        TableFormat& format = formats.emplace_back(TableFormat{table->name, {}});
        for (const sql::CatalogColumn& column : table->columns)
            format.columns.push_back(
                {column.name, columnType(column.type, column.width), column.width});
    }
    return formats;
}

void EngineDatabase::readPortions(const QString& table, std::size_t portion, const TakeRows& take) {
    const auto select = std::make_shared<const sql::SelectStatement>(allColumnsOf(table));
    readRows(bind({select, nullptr, RecordsetType::Snapshot}), portion, take);
}

std::shared_ptr<const sql::CatalogTable> EngineDatabase::outputTable(const QString& name) {
    auto table = catalog().findTable(name);
    if (!table)
        throw RunError::make(ErrorNumber::unknownOutputTable, {name}, ErrorSource::database);
    return table;
}

void EngineDatabase::replaceRows(const QString& table, const QStringList& columns,
                                 const std::vector<Row>& rows) {
    const auto target = outputTable(table);
    Transaction write(shared_from_this(), TransactionKind::Write);
    refill(target, columnsOf(*target, columns), rows);
    write.commit();
}

void EngineDatabase::refill(const std::shared_ptr<const sql::CatalogTable>& table,
                            const std::vector<sql::CatalogColumn>& columns,
                            const std::vector<Row>& rows) {
    run(sql::BoundDelete{{table, QStringLiteral("t")}, nullptr});
    writeRows(*table, columns, rows);
}

void EngineDatabase::appendRows(const QString& table, const QStringList& columns,
                                const std::vector<Row>& rows) {
    const auto target = outputTable(table);
    Transaction write(shared_from_this(), TransactionKind::Write);
    writeRows(*target, columnsOf(*target, columns), rows);
    write.commit();
}

} // namespace tallyroom
