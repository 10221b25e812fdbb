#include "store/SqliteDatabase.h"

#include "store/SqliteCopy.h"
#include "store/SqliteDynaset.h"
#include "store/StoreErrors.h"
#include "store/Workspace.h"
#include "store/sql/Generator.h"
#include "store/sql/Parser.h"
#include "store/sql/StatementBinder.h"
#include "store/sql/UpdateChain.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <sqlite3.h>

namespace tallyroom {

namespace {

sql::Generator generator() {
    return sql::Generator(sql::sqliteDialect());
}

// Another file that takes part in one statement.
class Attachment {
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

SqliteDatabase::SqliteDatabase(const QString& file) : m_session(std::make_unique<Session>(file)) {
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

// A file cannot be detached inside a batch, which is therefore written first and begun again.
void SqliteDatabase::insertInto(const sql::InsertStatement& statement, const QString& file) {
    const bool batch = m_inBatch;
    if (batch)
        commitBatch();
    const auto goOn = qScopeGuard([this, batch] {
        ++m_batches; // others may have written
        if (batch)
            m_inBatch = sqlite3_exec(m_session->connection.handle(), "BEGIN", nullptr, nullptr,
                                     nullptr) == SQLITE_OK;
    });
    withTarget(file, [&] {
        connection().run(generator().insertRows(sql::bindInsert(catalog(), statement)));
    });
}

// While the work runs, inserts go to the file.
void SqliteDatabase::withTarget(const QString& file, const std::function<void()>& work) {
    const auto backToOwnFile = qScopeGuard([this] {
        m_session->catalog.setInsertPlace(SqliteCatalog::ownPlace);
        m_session->connection.setTarget({});
    });
    connection().setTarget(file);
    const Attachment attachment(connection(), file);
    session().catalog.setInsertPlace(SqliteCatalog::targetPlace);
    work();
}

bool SqliteDatabase::refill(const QString& insert) {
    if (!isOpen() || sqlite3_get_autocommit(connection().handle()) == 0)
        return false;
    try {
        const sql::Statement statement = sql::parseStatement(insert);
        const auto* parsed = std::get_if<sql::InsertStatement>(&statement);
        const QString file = parsed ? targetFile(parsed->file) : QString();
        if (file.isEmpty())
            return false;
        withTarget(file, [&] { refillTarget(*parsed); });
        return true;
    } catch (const RunError&) { // whatever it is, it comes again when they run one by one
        return false;
    }
}

// Begins without a lock: the own file is only read, and others may write to it meanwhile.
void SqliteDatabase::refillTarget(const sql::InsertStatement& statement) {
    sqlite3* handle = connection().handle();
    const sql::BoundInsert filling = sql::bindInsert(catalog(), statement);
    connection().run(QStringLiteral("BEGIN"));
    const auto undo = qScopeGuard([handle] {
        if (sqlite3_get_autocommit(handle) == 0)
            sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
    });
    connection().run(generator().deleteRows({filling.target, nullptr}));
    connection().run(generator().insertRows(filling));
    connection().run(QStringLiteral("COMMIT"));
}

bool SqliteDatabase::executeAsOne(const QStringList& updates) {
    const QString native = composedText(updates);
    if (native.isEmpty())
        return false;
    const bool batched = inBatch();
    try {
        connection().run(native);
        return true;
    } catch (const RunError&) {
        if (batched && !inBatch())
            throw;
        return false;
    }
}

// Empty when they cannot be told to come to the same in one.
QString SqliteDatabase::composedText(const QStringList& updates) {
    const auto whole = sql::composed(boundUpdates(updates));
    return whole ? generator().updateAllOrNone(*whole) : QString();
}

std::vector<sql::BoundUpdate> SqliteDatabase::boundUpdates(const QStringList& updates) {
    session();
    std::vector<sql::BoundUpdate> bound;
    try {
        for (const QString& update : updates) {
            const sql::Statement statement = sql::parseStatement(update);
            const auto* parsed = std::get_if<sql::UpdateStatement>(&statement);
            if (!parsed)
                return {};
            bound.push_back(sql::bindUpdate(catalog(), *parsed));
        }
        return bound;
    } catch (const RunError&) {
        return {};
    }
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

void SqliteDatabase::beginBatch() {
    connection().run(
        QStringLiteral("BEGIN IMMEDIATE")); // a later upgrade would not wait for others
    m_inBatch = true;
    ++m_batches;
}

bool SqliteDatabase::inBatch() const {
    return m_inBatch && m_session && sqlite3_get_autocommit(m_session->connection.handle()) == 0;
}

// The engine itself ends a batch when the disk fails; the statement that met it has raised that.
void SqliteDatabase::commitBatch() {
    m_inBatch = false;
    if (sqlite3_get_autocommit(connection().handle()) != 0)
        return;
    try {
        connection().run(QStringLiteral("COMMIT"));
    } catch (const RunError&) {
        sqlite3_exec(connection().handle(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

void SqliteDatabase::undoBatch() {
    if (inBatch())
        sqlite3_exec(m_session->connection.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    m_inBatch = false;
}

bool SqliteDatabase::beginReading() {
    if (m_inBatch || sqlite3_get_autocommit(connection().handle()) == 0)
        return false;
    connection().run(QStringLiteral("BEGIN"));
    m_reading = true;
    return true;
}

void SqliteDatabase::endReading() {
    if (std::exchange(m_reading, false) && sqlite3_get_autocommit(connection().handle()) == 0)
        connection().run(QStringLiteral("COMMIT"));
}

ChangeMark SqliteDatabase::changeMark() {
    SqliteQuery query(connection(), QStringLiteral("PRAGMA main.data_version"));
    query.next();
    return {query.key(0), sqlite3_total_changes(connection().handle()) + m_drops,
            connection().rollbacks()};
}

void SqliteDatabase::setProgress(std::function<void()> callback) {
    connection().setProgress(std::move(callback));
}

bool SqliteDatabase::isInPlace() {
    int moved = 1;
    sqlite3_file_control(connection().handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved == 0;
}

void SqliteDatabase::close() {
    session();
    m_session.reset();
    m_inBatch = false;
    m_reading = false;
}

} // namespace tallyroom
