// A connection of the engine with its prepared statements.
#pragma once

#include "store/Database.h"
#include "store/sql/Generator.h"

#include <QHash>
#include <QString>
#include <SQLiteCpp/Database.h>
#include <functional>
#include <memory>

struct sqlite3_stmt;

namespace tallyroom {

QString sqliteVersion(); // of the engine's library: "3.40.1"

class SqliteConnection {
public:
    // Opens an existing file, never creates one; without a name, a database in memory. Raises a
    // RunError when the file is not to be had.
    explicit SqliteConnection(const QString& file, WhenInUse answer = WhenInUse::Wait);
    SqliteConnection(const SqliteConnection&) = delete;
    SqliteConnection& operator=(const SqliteConnection&) = delete;

    const QString& file() const { return m_file; }
    // Another file that is worked on as "target"; "" when there is none. Errors speak of it, unless
    // it is the connection's own file that cannot be read.
    void setTarget(const QString& file) { m_target = file; }
    sqlite3* handle() const { return m_database.getHandle(); }

    qint64 rollbacks() const { return m_rollbacks; } // also those by the engine itself

    void setWhenInUse(WhenInUse answer);              // see Database
    void setProgress(std::function<void()> callback); // likewise

    // What is committed in the schema ("main", or an attached one) survives a power cut.
    void synchronize(const QString& schema);

    // Runs a statement that gives no rows.
    void run(const QString& native);
    void run(const sql::Native& native);

private:
    friend class SqliteQuery;
    std::shared_ptr<sqlite3_stmt> prepare(const QString& native);
    void require(bool done) const; // raises the engine's last error otherwise
    bool isTargetToBlame(int code) const;

    QString m_file;
    QString m_target;
    qint64 m_rollbacks = 0;
    int m_timeout = 0; // milliseconds
    std::function<void()> m_progress;
    SQLite::Database m_database;
    QHash<QString, std::shared_ptr<sqlite3_stmt>> m_statements; // none is ever mid-way
};

// One use of a prepared statement. It is reset when the use ends, so that no lock outlives it.
class SqliteQuery {
public:
    SqliteQuery(SqliteConnection& connection, const QString& native);
    SqliteQuery(SqliteConnection& connection, const sql::Native& native);
    ~SqliteQuery();
    SqliteQuery(const SqliteQuery&) = delete;
    SqliteQuery& operator=(const SqliteQuery&) = delete;

    // Parameters count from 1, columns from 0.
    void bind(int parameter, const Variant& value);
    void bind(int parameter, qint64 key);
    void bindAll(const std::vector<Variant>& values); // from the first one on
    bool next();
    void again(); // from the beginning; the parameters stay
    qint64 key(int column) const;
    QString text(int column) const;
    // The value as the column's type has it; what was stored with another type keeps its own.
    Variant value(int column, sql::ValueType type) const;
    // The values of columns that begin with the `first` one.
    Row row(const std::vector<sql::BoundColumn>& columns, int first = 0) const;

private:
    void bind(int parameter, const QString& text);

    SqliteConnection& m_connection;
    std::shared_ptr<sqlite3_stmt> m_statement;
    QHash<int, QByteArray> m_texts; // by parameter: the engine reads them here
};

} // namespace tallyroom
