#include "store/sqlite/SqliteConnection.h"

#include "store/engine/TypedValue.h"
#include "store/sqlite/SqliteErrors.h"
#include "store/sqlite/SqliteFunctions.h"

#include <sqlite3.h>

namespace tallyroom {

namespace {

constexpr int busyTimeout = 2000;        // milliseconds
constexpr int progressSteps = 5'000'000; // of the engine's machine, some tenth of a second
// Statements with long lists of codes are not likely to come again.
constexpr qsizetype maximumStatements = 64;
constexpr qsizetype maximumKeptLength = 8192;

// A connection is used by the one thread that has windows, so the engine need not guard each call.
SQLite::Database openFile(const QString& file) {
    const int flags = SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX;
    try {
        if (file.isEmpty())
            return {":memory:", flags | SQLite::OPEN_CREATE};
        return {file.toUtf8().constData(), flags};
    } catch (const SQLite::Exception& error) {
        throw storeError(error, file);
    }
}

// A file may come from anywhere: nothing in it may run code, and names are never taken for texts.
bool harden(sqlite3* handle) {
    return sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr) == SQLITE_OK &&
           sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr) == SQLITE_OK &&
           sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr) == SQLITE_OK &&
           sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr) == SQLITE_OK &&
           sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr) ==
               SQLITE_OK;
}

// Of the target, which is the smaller file by far.
bool isSound(sqlite3* handle) {
    bool sound = false;
    const auto takeAnswer = [](void* result, int, char** values, char**) {
        *static_cast<bool*>(result) = qstrcmp(values[0], "ok") == 0;
        return 0;
    };
    return sqlite3_exec(handle, "PRAGMA target.quick_check(1)", takeAnswer, &sound, nullptr) ==
               SQLITE_OK &&
           sound;
}

} // namespace

QString sqliteVersion() {
    return QString::fromLatin1(sqlite3_libversion());
}

SqliteConnection::SqliteConnection(const QString& file, WhenInUse answer)
    : m_file(file), m_database(openFile(file)) {
    sqlite3_extended_result_codes(handle(), 1);
    if (!harden(handle()) || !registerSqliteFunctions(handle()))
        throw RunError::make(ErrorNumber::outOfMemory);
    sqlite3_rollback_hook(
        handle(), [](void* count) { ++*static_cast<qint64*>(count); }, &m_rollbacks);
    setWhenInUse(answer);
    synchronize(QStringLiteral("main"));
    // A page that is damaged shows when it is read, not by what it does to others.
    run(QStringLiteral("PRAGMA cell_size_check = ON"));
}

void SqliteConnection::setWhenInUse(WhenInUse answer) {
    m_timeout = answer == WhenInUse::Wait ? busyTimeout : 0;
    sqlite3_busy_timeout(handle(), m_timeout);
}

void SqliteConnection::setProgress(std::function<void()> callback) {
    m_progress = std::move(callback);
    const auto report = [](void* progress) noexcept {
        (*static_cast<std::function<void()>*>(progress))();
        return 0; // the statement goes on
    };
    sqlite3_progress_handler(handle(), progressSteps, m_progress ? +report : nullptr, &m_progress);
}

// A journal whose removal is still on its way to the disk when the power fails comes back, and
// undoes what was committed: EXTRA waits for the removal, too.
void SqliteConnection::synchronize(const QString& schema) {
    run(QStringLiteral("PRAGMA %1.synchronous = EXTRA").arg(schema));
}

void SqliteConnection::run(const QString& native) {
    run(sql::Native{native, {}});
}

void SqliteConnection::run(const sql::Native& native) {
    SqliteQuery query(*this, native);
    while (query.next()) {
    }
}

void SqliteConnection::require(bool done) const {
    if (done)
        return;
    const SQLite::Exception error(handle());
    throw storeError(error, isTargetToBlame(error.getErrorCode()) ? m_target : m_file);
}

// The engine does not tell which of two files a statement has failed for.
bool SqliteConnection::isTargetToBlame(int code) const {
    if (m_target.isEmpty() || !isFileError(code))
        return false;
    if ((code & 0xff) == SQLITE_CORRUPT)
        return !isSound(handle());
    sqlite3_busy_timeout(handle(), 0); // who waited once need not wait again
    const bool isOwnReadable = sqlite3_exec(handle(), "SELECT 1 FROM main.sqlite_master", nullptr,
                                            nullptr, nullptr) == SQLITE_OK;
    sqlite3_busy_timeout(handle(), m_timeout);
    return isOwnReadable;
}

std::shared_ptr<sqlite3_stmt> SqliteConnection::prepare(const QString& native) {
    if (auto known = m_statements.value(native))
        return known;
    if (m_statements.size() >= maximumStatements)
        m_statements.clear();
    const QByteArray text = native.toUtf8();
    sqlite3_stmt* prepared = nullptr;
    require(sqlite3_prepare_v2(handle(), text.constData(), static_cast<int>(text.size()) + 1,
                               &prepared, nullptr) == SQLITE_OK);
    std::shared_ptr<sqlite3_stmt> statement(prepared, sqlite3_finalize);
    if (native.size() <= maximumKeptLength)
        m_statements.insert(native, statement);
    return statement;
}

// Reading by the C interface directly: the wrapper's columns cost as much again as the values.
SqliteQuery::SqliteQuery(SqliteConnection& connection, const QString& native)
    : m_connection(connection), m_statement(connection.prepare(native)) {}

SqliteQuery::SqliteQuery(SqliteConnection& connection, const sql::Native& native)
    : SqliteQuery(connection, native.text) {
    bindAll(native.values);
}

SqliteQuery::~SqliteQuery() {
    sqlite3_reset(m_statement.get()); // its result repeats the error that a step has raised already
    sqlite3_clear_bindings(m_statement.get());
}

void SqliteQuery::bind(int parameter, qint64 key) {
    m_connection.require(sqlite3_bind_int64(m_statement.get(), parameter, key) == SQLITE_OK);
}

void SqliteQuery::bindAll(const std::vector<Variant>& values) {
    int parameter = 0;
    for (const Variant& value : values)
        bind(++parameter, value);
}

void SqliteQuery::bind(int parameter, const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Null:
    case Variant::Type::Empty:
        return m_connection.require(sqlite3_bind_null(m_statement.get(), parameter) == SQLITE_OK);
    case Variant::Type::Boolean:
    case Variant::Type::Long:
        return bind(parameter, static_cast<qint64>(value.toDouble()));
    case Variant::Type::Double:
        return m_connection.require(
            sqlite3_bind_double(m_statement.get(), parameter, value.toDouble()) == SQLITE_OK);
    case Variant::Type::Date:
        return bind(parameter, Dates::toIso(value.toDate()));
    default:
        return bind(parameter, value.toText());
    }
}

void SqliteQuery::bind(int parameter, const QString& text) {
    QByteArray& utf8 = m_texts[parameter];
    utf8 = text.toUtf8();
    m_connection.require(sqlite3_bind_text(m_statement.get(), parameter, utf8.constData(),
                                           static_cast<int>(utf8.size()),
                                           SQLITE_STATIC) == SQLITE_OK);
}

bool SqliteQuery::next() {
    const int result = sqlite3_step(m_statement.get());
    m_connection.require(result == SQLITE_ROW || result == SQLITE_DONE);
    return result == SQLITE_ROW;
}

void SqliteQuery::again() {
    sqlite3_reset(m_statement.get()); // as above
}

qint64 SqliteQuery::key(int column) const {
    return sqlite3_column_int64(m_statement.get(), column);
}

QString SqliteQuery::text(int column) const {
    const auto* text =
        reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), column));
    return QString::fromUtf8(text, sqlite3_column_bytes(m_statement.get(), column));
}

Variant SqliteQuery::value(int column, sql::ValueType type) const {
    switch (sqlite3_column_type(m_statement.get(), column)) {
    case SQLITE_INTEGER:
        if (type == sql::ValueType::Long || type == sql::ValueType::Null)
            return wholeNumber(static_cast<double>(key(column)));
        [[fallthrough]];
    case SQLITE_FLOAT:
        return typedNumber(sqlite3_column_double(m_statement.get(), column), type);
    case SQLITE_TEXT:
        return typedText(text(column), type);
    case SQLITE_BLOB:
        return {QByteArray(static_cast<const char*>(sqlite3_column_blob(m_statement.get(), column)),
                           sqlite3_column_bytes(m_statement.get(), column))};
    default:
        return Variant::null();
    }
}

Row SqliteQuery::row(const std::vector<sql::BoundColumn>& columns, int first) const {
    Row row;
    row.reserve(columns.size());
    for (const sql::BoundColumn& column : columns)
        row.push_back(value(first + static_cast<int>(row.size()), column.value->type));
    return row;
}

} // namespace tallyroom
