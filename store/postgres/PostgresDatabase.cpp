#include "store/postgres/PostgresDatabase.h"

#include "store/ErrorSource.h"
#include "store/engine/FieldValue.h"
#include "store/postgres/PostgresDialect.h"
#include "store/postgres/PostgresKeyedRows.h"
#include "store/postgres/PostgresOneByOne.h"
#include "store/postgres/PostgresSchema.h"
#include "store/sql/LiteralTexts.h"
#include "store/sql/Parser.h"
#include "store/sql/StatementBinder.h"

#include <QScopeGuard>
#include <algorithm>

namespace tallyroom {

namespace {

std::vector<Row> rowsOf(const PostgresResult& result, const sql::BoundSelect& query) {
    std::vector<Row> rows;
    rows.reserve(static_cast<std::size_t>(result.rows()));
    for (int row = 0; row < result.rows(); ++row)
        rows.push_back(result.row(row, query.columns));
    return rows;
}

// The server does not tidy up what belongs to a session: in a table of its own, rows that are only
// deleted would be read over as long as the session lasts.
sql::Native deletion(const sql::BoundDelete& statement) {
    const sql::CatalogTable& table = *statement.target.table;
    const bool isEmptied = table.place == ownSchema && !statement.where;
    if (isEmptied)
        return {QStringLiteral("TRUNCATE ") + postgresGenerator().tableName(table), {}};
    return postgresGenerator().deleteRows(statement);
}

QStringList namesOf(const std::vector<sql::CatalogColumn>& columns) {
    QStringList names;
    for (const sql::CatalogColumn& column : columns)
        names << column.name;
    return names;
}

// As an Insert converts them.
std::vector<Row> converted(std::vector<Row> rows, const std::vector<sql::CatalogColumn>& columns) {
    for (Row& row : rows) {
        for (std::size_t at = 0; at < columns.size(); ++at)
            row[at] = insertedValue(row[at], columns[at].type, columns[at].width);
    }
    return rows;
}

// The path of another file of the same site, or of another one.
ServerAddress targetOf(const QString& path) {
    if (!isServerAddress(path))
        throw RunError::make(ErrorNumber::fileNotFound, {path}, ErrorSource::database);
    return parseServerAddress(path);
}

} // namespace

PostgresDatabase::PostgresDatabase(const ServerAddress& address, WhenInUse answer,
                                   CopySearchMaker maker)
    : EngineDatabase(maker), m_address(address), m_session(PostgresSession::of(address)),
      m_catalog(m_session->tables(), address.schema), m_caller{address.shown, answer} {
    if (!hasFile(address.schema))
        throw RunError::make(ErrorNumber::fileNotFound, {address.shown}, ErrorSource::workspace);
}

PostgresDatabase::~PostgresDatabase() {
    if (m_session)
        leaveSession();
}

void PostgresDatabase::leaveSession() noexcept {
    rollback();
    m_session->endCallbacksOf(this);
}

// One that is not there may be made yet. The first to look for a file that has tables of a board's
// own makes these.
bool PostgresDatabase::hasFile(const QString& schema) {
    PostgresTables& tables = m_session->tables();
    const bool found = tables.hasSchema(schema);
    if (!found)
        tables.forget(schema);
    else if (hasOwnTables(schema) && !tables.hasSchema(ownSchema))
        makeOwnTables();
    return found;
}

void PostgresDatabase::makeOwnTables() {
    std::vector<PostgresStatement> statements;
    for (const QString& statement : createOwnTableStatements())
        statements.push_back({statement, {}});
    m_session->writeAll(ownSchema, statements);
    m_session->tables().forget(ownSchema);
}

// The files of a site share the session, but each has its name and is waited for in its own way.
PostgresSession& PostgresDatabase::session() {
    requireOpen();
    m_session->workFor(m_caller);
    return *m_session;
}

const sql::Catalog& PostgresDatabase::catalog() {
    requireOpen();
    return m_catalog;
}

std::vector<Row> PostgresDatabase::readRows(const sql::BoundSelect& query) {
    return rowsOf(session().read(postgresGenerator().rows(query)), query);
}

std::vector<std::vector<Row>>
PostgresDatabase::readAll(const std::vector<sql::BoundSelect>& queries) {
    std::vector<PostgresStatement> statements;
    for (const sql::BoundSelect& query : queries)
        statements.push_back({postgresGenerator().rows(query), {}});
    const std::vector<PostgresResult> results = session().readAll(statements);
    std::vector<std::vector<Row>> all;
    for (std::size_t at = 0; at < queries.size(); ++at)
        all.push_back(rowsOf(results[at], queries[at]));
    return all;
}

// A cursor has a name of its own, since the server keeps what a statement with its name gives.
void PostgresDatabase::readRows(const sql::BoundSelect& query, std::size_t portion,
                                const TakeRows& take) {
    static int made = 0;
    const QString cursor = QStringLiteral("tr_rows_%1").arg(++made);
    const QString fetch = QStringLiteral("FETCH %1 FROM %2").arg(portion).arg(cursor);
    Transaction whole(shared_from_this(), TransactionKind::Read);
    session().read(QStringLiteral("DECLARE %1 NO SCROLL CURSOR FOR ").arg(cursor) +
                   postgresGenerator().rows(query));
    for (auto rows = rowsOf(session().read(fetch), query); !rows.empty();
         rows = rowsOf(session().read(fetch), query))
        take(rows);
    session().read(QStringLiteral("CLOSE ") + cursor);
    whole.commit();
}

std::unique_ptr<KeyedRows> PostgresDatabase::keyedRows(const sql::BoundSelect& query) {
    requireOpen();
    return std::make_unique<PostgresKeyedRows>(m_session, m_caller, query);
}

// Updates, deletions and single rows; of other statements, nothing.
std::optional<PostgresStatement> PostgresDatabase::native(const sql::Statement& statement) {
    if (const auto* update = std::get_if<sql::UpdateStatement>(&statement))
        return statementOf(postgresGenerator().updateRows(sql::bindUpdate(m_catalog, *update)));
    if (const auto* removal = std::get_if<sql::DeleteStatement>(&statement))
        return statementOf(postgresGenerator().deleteRows(sql::bindDelete(m_catalog, *removal)));
    if (const auto* row = std::get_if<sql::InsertStatement>(&statement);
        row && row->file.isEmpty() && row->rows.index() == 0)
        return statementOf(postgresGenerator().insertRows(sql::bindInsert(m_catalog, *row)));
    return std::nullopt;
}

// Where a row is refused, or other statements are among them, they go one by one.
void PostgresDatabase::executeAll(const QStringList& statements) {
    std::vector<PostgresStatement> natives;
    for (const QString& statement : statements) {
        if (auto one = native(sql::parseStatement(statement)))
            natives.push_back(std::move(*one));
    }
    try {
        if (static_cast<qsizetype>(natives.size()) == statements.size())
            return session().writeAll(hasOwnTables(m_address.schema) ? ownSchema : m_address.schema,
                                      natives);
    } catch (const RunError& error) {
        if (!isRefusal(error))
            throw;
    }
    Transaction whole(shared_from_this(), TransactionKind::Write);
    session().beginPart();
    auto undo = qScopeGuard([this] { m_session->undoPart(); });
    for (const QString& statement : statements)
        execute(statement);
    undo.dismiss();
    session().keepPart();
    whole.commit();
}

void PostgresDatabase::run(const sql::BoundDelete& statement) {
    session().write(statement.target.table->place, deletion(statement));
}

void PostgresDatabase::run(const sql::BoundUpdate& statement) {
    try {
        session().write(statement.target.table->place, postgresGenerator().updateRows(statement));
    } catch (const RunError& error) {
        if (!isRefusal(error))
            throw;
        Transaction whole(shared_from_this(), TransactionKind::Write);
        updateOneByOne(session(), statement);
        whole.commit();
    }
}

// Of one row that is refused, nothing is left to do.
void PostgresDatabase::run(const sql::BoundInsert& statement) {
    const sql::CatalogTable& table = *statement.target.table;
    try {
        session().write(table.place, postgresGenerator().insertRows(statement));
    } catch (const RunError& error) {
        if (!isRefusal(error))
            throw;
        const auto* query = std::get_if<sql::BoundSelect>(&statement.rows);
        if (!query)
            return;
        Transaction whole(shared_from_this(), TransactionKind::Write);
        insertOneByOne(session(), table, statement.columns, readRows(*query));
        whole.commit();
    }
}

void PostgresDatabase::run(const sql::BoundDrop& statement) {
    session().write(statement.target.table->place,
                    PostgresStatement{postgresGenerator().dropTable(statement), {}});
    session().tables().forget();
}

void PostgresDatabase::insertInto(const sql::InsertStatement& statement) {
    const ServerAddress target = targetOf(statement.file);
    if (target.schema != m_address.schema && m_inTransaction)
        throw RunError::make(ErrorNumber::invalidOperation, {}, ErrorSource::database);
    if (target.conninfo != m_address.conninfo || !hasFile(target.schema))
        throw RunError::make(ErrorNumber::fileNotFound, {target.shown}, ErrorSource::database);
    const auto backToOwnFile = qScopeGuard([this] { m_catalog.setTarget(m_address.schema); });
    m_catalog.setTarget(target.schema);
    run(sql::bindInsert(m_catalog, statement));
}

// Many rows are copied, unless the table could refuse one; few take a single round trip otherwise.
void PostgresDatabase::writeRows(const sql::CatalogTable& table,
                                 const std::vector<sql::CatalogColumn>& columns,
                                 const std::vector<Row>& rows) {
    constexpr std::size_t fewRows = 10;
    const QStringList names = namesOf(columns);
    if (table.keepsWhatIsWritten && rows.size() > fewRows)
        session().copyRows(table.place, postgresGenerator().tableWithColumns(table, names),
                           converted(rows, columns));
    else
        insertAtOnce(session(), table, names, converted(rows, columns));
}

// What empties the table needs no question of its own.
void PostgresDatabase::refill(const std::shared_ptr<const sql::CatalogTable>& table,
                              const std::vector<sql::CatalogColumn>& columns,
                              const std::vector<Row>& rows) {
    if (!table->keepsWhatIsWritten)
        return EngineDatabase::refill(table, columns, rows);
    session().copyRows(table->place, postgresGenerator().tableWithColumns(*table, namesOf(columns)),
                       converted(rows, columns),
                       deletion({{table, QStringLiteral("t")}, nullptr}).text);
}

void PostgresDatabase::begin(TransactionKind kind) {
    session().begin(kind);
    m_inTransaction = true;
}

bool PostgresDatabase::commit() {
    session();
    m_inTransaction = false;
    return m_session->commit();
}

void PostgresDatabase::rollback() noexcept {
    if (!m_inTransaction)
        return;
    m_inTransaction = false;
    m_session->rollback();
}

// Of a file that others write to as well nothing is known without asking.
ChangeMark PostgresDatabase::changeMark() {
    static qint64 asked = 0;
    if (hasOwnTables(m_address.schema))
        return {0, session().changes(ownSchema), 0};
    return {++asked, 0, 0};
}

void PostgresDatabase::setWhenInUse(WhenInUse answer) {
    requireOpen();
    m_caller.whenInUse = answer;
}

void PostgresDatabase::announce(const QString& news) {
    session().announce(news);
}

void PostgresDatabase::setListener(std::function<void(const QStringList&)> callback) {
    session().setListener(this, std::move(callback));
}

void PostgresDatabase::setProgress(std::function<void()> callback) {
    session().setProgress(this, std::move(callback));
}

// A new connection is another place: what belonged to the old one is gone.
bool PostgresDatabase::isInPlace() {
    return !session().connection().lost();
}

// The server itself finds what is damaged; it was asked for the tables when the file was opened.
void PostgresDatabase::checkStructure() {
    requireOpen();
}

void PostgresDatabase::close() {
    requireOpen();
    leaveSession();
    m_session.reset();
}

} // namespace tallyroom
