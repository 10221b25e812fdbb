#include "store/SqliteDatabase.h"

#include "store/SqliteCopy.h"
#include "store/SqliteDynaset.h"
#include "store/SqliteGenerator.h"
#include "store/SqliteRows.h"
#include "store/StoreErrors.h"
#include "store/Workspace.h"
#include "store/sql/Parser.h"
#include "store/sql/StatementBinder.h"

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

} // namespace

SqliteDatabase::SqliteDatabase(const QString& file, WhenInUse answer)
    : m_session(std::make_unique<Session>(file, answer)) {
    m_session->connection.run(QStringLiteral("SELECT count(*) FROM main.sqlite_master"));
}

SqliteDatabase::Session& SqliteDatabase::session() {
    if (!m_session)
        throw RunError::make(ErrorNumber::objectInvalid, {}, ErrorSource::database);
    return *m_session;
}

SqliteConnection& SqliteDatabase::connection() {
    return session().connection;
}

const sql::Catalog& SqliteDatabase::catalog() {
    return session().catalog;
}

void SqliteDatabase::execute(const QString& sql) {
    session();
    std::visit([this](const auto& statement) { runStatement(statement); },
               sql::parseStatement(sql));
}

void SqliteDatabase::runStatement(const sql::SelectStatement&) {
    throw RunError::make(ErrorNumber::notASelect);
}

void SqliteDatabase::runStatement(const sql::DeleteStatement& statement) {
    connection().run(generator().deleteRows(sql::bindDelete(catalog(), statement)));
}

void SqliteDatabase::runStatement(const sql::UpdateStatement& statement) {
    connection().run(generator().updateRows(sql::bindUpdate(catalog(), statement)));
}

void SqliteDatabase::runStatement(const sql::DropStatement& statement) {
    connection().run(generator().dropTable(sql::bindDrop(catalog(), statement)));
    ++m_drops;
}

void SqliteDatabase::runStatement(const sql::InsertStatement& statement) {
    const QString file = targetFile(statement.file);
    if (!file.isEmpty())
        insertInto(statement, file);
    else
        connection().run(generator().insertRows(sql::bindInsert(catalog(), statement)));
}

// Naming the connection's own file is the same as naming none.
QString SqliteDatabase::targetFile(const QString& named) {
    if (named.isEmpty())
        return {};
    const QString file = Workspace::resolveFile(named);
    const bool own =
        QFileInfo(file).canonicalFilePath() == QFileInfo(connection().file()).canonicalFilePath();
    return own ? QString() : file;
}

// The engine attaches no file inside a transaction.
void SqliteDatabase::insertInto(const sql::InsertStatement& statement, const QString& file) {
    if (inTransaction())
        throw RunError::make(ErrorNumber::invalidOperation, {}, ErrorSource::database);
    const auto backToOwnFile = qScopeGuard([this] {
        m_session->catalog.setInsertPlace(SqliteCatalog::ownPlace);
        m_session->connection.setTarget({});
    });
    connection().setTarget(file);
    const Attachment attachment(connection(), file);
    session().catalog.setInsertPlace(SqliteCatalog::targetPlace);
    connection().run(generator().insertRows(sql::bindInsert(catalog(), statement)));
}

std::shared_ptr<Recordset> SqliteDatabase::openRecordset(const QString& sql, RecordsetType type) {
    session();
    RecordsetQuery query;
    query.select = std::make_shared<const sql::SelectStatement>(parseSelect(sql));
    query.type = type;
    return open(query);
}

sql::BoundSelect SqliteDatabase::bind(const RecordsetQuery& query) {
    return sql::bindSelect(catalog(), *query.select, query.sort.get());
}

std::shared_ptr<Recordset> SqliteDatabase::open(const RecordsetQuery& query) {
    sql::BoundSelect bound = bind(query);
    const auto self = std::static_pointer_cast<SqliteDatabase>(shared_from_this());
    std::shared_ptr<SqliteRecordset> recordset;
    if (query.type == RecordsetType::Dynaset && bound.updatable())
        recordset = std::make_shared<SqliteDynaset>(self, query, std::move(bound));
    else
        recordset = std::make_shared<SqliteCopy>(self, query, std::move(bound));
    recordset->start();
    return recordset;
}

bool SqliteDatabase::keepsWhatIsWritten(const Schema::Table& table) {
    return session().catalog.keepsWhatIsWritten(table);
}

void SqliteDatabase::replaceRows(const QString& table, const QStringList& columns,
                                 const std::vector<Row>& rows) {
    const auto target = catalog().findTable(table);
    if (!target)
        throw RunError::make(ErrorNumber::unknownOutputTable, {table}, ErrorSource::database);
    Transaction write(shared_from_this(), TransactionKind::Write);
    SqliteRows(connection(), *target, columns).replaceBy(rows);
    write.commit();
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
void SqliteDatabase::commit() {
    session();
    if (!inTransaction())
        throw RunError::make(ErrorNumber::cannotOpenFile, {connection().file()},
                             ErrorSource::database);
    try {
        connection().run(QStringLiteral("COMMIT"));
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
