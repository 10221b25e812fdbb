#include "store/SqliteConnection.h"

#include "store/SqliteFunctions.h"
#include "store/StoreErrors.h"

#include <cmath>
#include <limits>
#include <sqlite3.h>

namespace tallyroom {

namespace {

constexpr int busyTimeout = 2000; // milliseconds
// Statements with long lists of codes are not likely to come again.
constexpr qsizetype maximumStatements = 64;
constexpr qsizetype maximumKeptLength = 8192;

// A connection is used by the one thread that has windows, so the engine need not guard each call.
SQLite::Database openFile(const QString& file) {
    const int flags = SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX;
    try {
        if (file.isEmpty())
            return {":memory:", flags | SQLite::OPEN_CREATE, 0};
        return {file.toUtf8().constData(), flags, busyTimeout};
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

Variant wholeNumber(qint64 number) {
    const bool fits =
        number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
    return fits ? Variant(static_cast<int>(number)) : Variant(static_cast<double>(number));
}

Variant typedNumber(double number, sql::ValueType type) {
    switch (type) {
    case sql::ValueType::Boolean:
        return Variant(number != 0);
    case sql::ValueType::Long:
        return wholeNumber(static_cast<qint64>(std::nearbyint(number)));
    case sql::ValueType::Date:
        return {Date{number}};
    default:
        return {number};
    }
}

Variant typedText(const QString& text, sql::ValueType type) {
    if (type == sql::ValueType::Date) {
        if (const auto date = Dates::fromIso(text))
            return {*date};
    }
    return {text};
}

QString textOf(const SQLite::Column& column) {
    const char* text = column.getText();
    return QString::fromUtf8(text, column.getBytes());
}

} // namespace

SqliteConnection::SqliteConnection(const QString& file)
    : m_file(file), m_reportedFile(file), m_database(openFile(file)) {
    sqlite3_extended_result_codes(handle(), 1);
    if (!harden(handle()) || !registerSqliteFunctions(handle()))
        throw RunError::make(ErrorNumber::outOfMemory);
    sqlite3_rollback_hook(
        handle(), [](void* count) { ++*static_cast<qint64*>(count); }, &m_rollbacks);
    run(QStringLiteral("PRAGMA synchronous = FULL"));
}

void SqliteConnection::run(const QString& native) {
    SqliteQuery query(*this, native);
    while (query.next()) {
    }
}

std::shared_ptr<SQLite::Statement> SqliteConnection::prepare(const QString& native) {
    if (auto known = m_statements.value(native))
        return known;
    if (m_statements.size() >= maximumStatements)
        m_statements.clear();
    try {
        auto statement =
            std::make_shared<SQLite::Statement>(m_database, native.toUtf8().constData());
        if (native.size() <= maximumKeptLength)
            m_statements.insert(native, statement);
        return statement;
    } catch (const SQLite::Exception& error) {
        throw storeError(error, m_reportedFile);
    }
}

SqliteQuery::SqliteQuery(SqliteConnection& connection, const QString& native)
    : m_connection(connection), m_statement(connection.prepare(native)) {}

SqliteQuery::~SqliteQuery() {
    m_statement->tryReset(); // its result repeats the error that a step has raised already
    m_statement->clearBindings();
}

void SqliteQuery::bind(int parameter, qint64 key) {
    m_statement->bind(parameter, static_cast<std::int64_t>(key));
}

void SqliteQuery::bind(int parameter, const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Null:
    case Variant::Type::Empty:
        return m_statement->bind(parameter);
    case Variant::Type::Boolean:
    case Variant::Type::Long:
        return m_statement->bind(parameter, static_cast<int>(value.toDouble()));
    case Variant::Type::Double:
        return m_statement->bind(parameter, value.toDouble());
    case Variant::Type::Date:
        return m_statement->bind(parameter, Dates::toIso(value.toDate()).toStdString());
    default:
        return m_statement->bind(parameter, value.toText().toStdString());
    }
}

bool SqliteQuery::next() {
    try {
        return m_statement->executeStep();
    } catch (const SQLite::Exception& error) {
        throw storeError(error, m_connection.reportedFile());
    }
}

qint64 SqliteQuery::key(int column) const {
    return m_statement->getColumn(column).getInt64();
}

QString SqliteQuery::text(int column) const {
    return textOf(m_statement->getColumn(column));
}

Variant SqliteQuery::value(int column, sql::ValueType type) const {
    const SQLite::Column cell = m_statement->getColumn(column);
    switch (cell.getType()) {
    case SQLITE_INTEGER:
        if (type == sql::ValueType::Long || type == sql::ValueType::Null)
            return wholeNumber(cell.getInt64());
        [[fallthrough]];
    case SQLITE_FLOAT:
        return typedNumber(cell.getDouble(), type);
    case SQLITE_TEXT:
        return typedText(textOf(cell), type);
    case SQLITE_BLOB:
        return {QByteArray(static_cast<const char*>(cell.getBlob()), cell.getBytes())};
    default:
        return Variant::null();
    }
}

} // namespace tallyroom
