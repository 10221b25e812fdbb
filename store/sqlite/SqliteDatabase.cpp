#include "store/sqlite/SqliteDatabase.h"

#include "store/ErrorSource.h"
#include "store/engine/FilePaths.h"
#include "store/sql/StatementBinder.h"
#include "store/sqlite/SqliteDialect.h"
#include "store/sqlite/SqliteKeyedRows.h"
#include "store/sqlite/SqliteRows.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <sqlite3.h>

namespace tallyroom {

namespace {

// Another file that takes part in one statement.
class [[nodiscard]] Attachment {
public:
    Attachment(SqliteConnection& connection, const QString& file) : Attachment(connection) {
        SqliteQuery query(connection, QStringLiteral("ATTACH ?1 AS target"));
        query.bind(1, Variant(file));
        query.next();
        connection.synchronize(QStringLiteral("target"));
    }
    ~Attachment() {
        // With no statement under way there is nothing that a detach could fail for; should it
        // fail all the same, the next attachment reports that the name is in use.
        sqlite3_exec(m_connection.handle(), "DETACH target", nullptr, nullptr, nullptr);
    }
    Attachment(const Attachment&) = delete;
    Attachment& operator=(const Attachment&) = delete;

private:
    // Detaches also what fails half-way.
    explicit Attachment(SqliteConnection& connection) : m_connection(connection) {}

    SqliteConnection& m_connection;
};

} // namespace

SqliteDatabase::SqliteDatabase(const QString& file, WhenInUse answer, CopySearchMaker maker)
    : EngineDatabase(maker), m_session(std::make_unique<Session>(file, answer)) {
    m_session->connection.run(QStringLiteral("SELECT count(*) FROM main.sqlite_master"));
}

SqliteDatabase::Session& SqliteDatabase::session() {
    requireOpen();
    return *m_session;
}

SqliteConnection& SqliteDatabase::connection() {
    return session().connection;
}

const sql::Catalog& SqliteDatabase::catalog() {
    return session().catalog;
}

std::vector<Row> SqliteDatabase::readRows(const sql::BoundSelect& query) {
    std::vector<Row> rows;
    SqliteQuery native(connection(), sqliteGenerator().rows(query));
    while (native.next())
        rows.push_back(native.row(query.columns));
    return rows;
}

void SqliteDatabase::readRows(const sql::BoundSelect& query, std::size_t portion,
                              const TakeRows& take) {
    std::vector<Row> rows;
    SqliteQuery native(connection(), sqliteGenerator().rows(query));
    while (native.next()) {
        rows.push_back(native.row(query.columns));
        if (rows.size() == portion) {
            take(rows);
            rows.clear();
        }
    }
    if (!rows.empty())
        take(rows);
}

std::unique_ptr<KeyedRows> SqliteDatabase::keyedRows(const sql::BoundSelect& query) {
    return std::make_unique<SqliteKeyedRows>(connection(), query);
}

void SqliteDatabase::run(const sql::BoundDelete& statement) {
    connection().run(sqliteGenerator().deleteRows(statement));
}

void SqliteDatabase::run(const sql::BoundUpdate& statement) {
    connection().run(sqliteGenerator().updateRows(statement));
}

void SqliteDatabase::run(const sql::BoundInsert& statement) {
    connection().run(sqliteGenerator().insertRows(statement));
}

void SqliteDatabase::run(const sql::BoundDrop& statement) {
    connection().run(sqliteGenerator().dropTable(statement));
    ++m_drops;
}

void SqliteDatabase::writeRows(const sql::CatalogTable& table,
                               const std::vector<sql::CatalogColumn>& columns,
                               const std::vector<Row>& rows) {
    writeSqliteRows(connection(), table, columns, rows);
}

// Naming the connection's own file is the same as naming none.
void SqliteDatabase::insertInto(const sql::InsertStatement& statement) {
    const QString file = FilePaths::resolveFile(statement.file);
    if (!isOwnFile(file))
        return insertIntoFile(statement, file);
    run(sql::bindInsert(catalog(), statement));
}

bool SqliteDatabase::isOwnFile(const QString& file) {
    return QFileInfo(file).canonicalFilePath() ==
           QFileInfo(connection().file()).canonicalFilePath();
}

// The engine attaches no file inside a transaction.
void SqliteDatabase::insertIntoFile(const sql::InsertStatement& statement, const QString& file) {
    if (inTransaction())
        throw RunError::make(ErrorNumber::invalidOperation, {}, ErrorSource::database);
    const auto backToOwnFile = qScopeGuard([this] {
        m_session->catalog.setInsertPlace(SqliteCatalog::ownPlace);
        m_session->connection.setTarget({});
    });
    connection().setTarget(file);
    const Attachment attachment(connection(), file);
    session().catalog.setInsertPlace(SqliteCatalog::targetPlace);
    run(sql::bindInsert(catalog(), statement));
}

void SqliteDatabase::executeAll(const QStringList& statements) {
    connection().run(QStringLiteral("SAVEPOINT statements"));
    auto undo = qScopeGuard([this] { // after a failing disk there is nothing left to undo
        sqlite3_exec(m_session->connection.handle(), "ROLLBACK TO statements; RELEASE statements",
                     nullptr, nullptr, nullptr);
    });
    for (const QString& statement : statements)
        execute(statement);
    connection().run(QStringLiteral("RELEASE statements"));
    undo.dismiss();
}

void SqliteDatabase::begin(TransactionKind kind) {
    Q_ASSERT(!inTransaction());
    if (kind == TransactionKind::Reserve)
        return reserve();
    connection().run(kind == TransactionKind::Read ? QStringLiteral("BEGIN")
                                                   // A later upgrade would not wait for others.
                                                   : QStringLiteral("BEGIN IMMEDIATE"));
}

// A folder that cannot be written and a full disk show when the engine begins its journal, which it
// does for the first change: one that changes nothing.
void SqliteDatabase::reserve() {
    if (sqlite3_db_readonly(connection().handle(), "main") != 0)
        throw RunError::make(ErrorNumber::readOnly, {}, ErrorSource::database);
    connection().run(QStringLiteral("BEGIN EXCLUSIVE"));
    auto undo = qScopeGuard([this] { rollback(); });
    requireInPlace();
    connection().run(QStringLiteral("PRAGMA main.user_version = %1").arg(userVersion()));
    undo.dismiss();
}

qint64 SqliteDatabase::userVersion() {
    SqliteQuery query(connection(), QStringLiteral("PRAGMA main.user_version"));
    query.next();
    return query.key(0);
}

void SqliteDatabase::requireInPlace() {
    if (isInPlace())
        return;
    const QString file = connection().file();
    throw QFileInfo::exists(file)
        ? RunError::make(ErrorNumber::objectInvalid, {}, ErrorSource::database)
        : RunError::make(ErrorNumber::fileNotFound, {file}, ErrorSource::database);
}

bool SqliteDatabase::inTransaction() const {
    return m_session && sqlite3_get_autocommit(m_session->connection.handle()) == 0;
}

// The engine itself ends a transaction when the disk fails.
bool SqliteDatabase::commit() {
    session();
    if (!inTransaction())
        throw RunError::make(ErrorNumber::cannotOpenFile, {connection().file()},
                             ErrorSource::database);
    try {
        connection().run(QStringLiteral("COMMIT"));
        return true;
    } catch (const RunError&) {
        rollback();
        throw;
    }
}

// After reading alone there is nothing to undo, and the change mark stays.
void SqliteDatabase::rollback() noexcept {
    if (!inTransaction())
        return;
    sqlite3* handle = m_session->connection.handle();
    const bool hasWritten = sqlite3_txn_state(handle, "main") == SQLITE_TXN_WRITE;
    sqlite3_exec(handle, hasWritten ? "ROLLBACK" : "COMMIT", nullptr, nullptr, nullptr);
}

ChangeMark SqliteDatabase::changeMark() {
    SqliteQuery query(connection(), QStringLiteral("PRAGMA main.data_version"));
    query.next();
    return {query.key(0), sqlite3_total_changes(connection().handle()) + m_drops,
            connection().rollbacks()};
}

void SqliteDatabase::setWhenInUse(WhenInUse answer) {
    connection().setWhenInUse(answer);
}

void SqliteDatabase::setProgress(std::function<void()> callback) {
    connection().setProgress(std::move(callback));
}

bool SqliteDatabase::isInPlace() {
    int moved = 1;
    sqlite3_file_control(connection().handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved == 0;
}

void SqliteDatabase::checkStructure() {
    SqliteQuery query(connection(), QStringLiteral("PRAGMA main.quick_check(1)"));
    if (!query.next() || query.text(0) != QLatin1String("ok"))
        throw RunError::make(ErrorNumber::damagedFile, {connection().file()},
                             ErrorSource::database);
}

void SqliteDatabase::close() {
    session();
    m_session.reset();
}

} // namespace tallyroom
