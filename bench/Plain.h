// The engine through its own C interface, as a program without this project's store would use it.
#pragma once

#include <QString>
#include <QStringList>
#include <sqlite3.h>
#include <string>
#include <string_view>

namespace tallyroom::bench {

// A connection with the settings of the store's own: synchronous = EXTRA and a busy timeout.
// Everything here throws std::runtime_error when the engine reports an error.
class Plain {
public:
    explicit Plain(const QString& file);
    ~Plain();
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;

    void run(const std::string& sql);
    sqlite3* handle() const { return m_handle; }

private:
    sqlite3* m_handle = nullptr;
};

class PlainStatement {
public:
    PlainStatement(Plain& connection, const std::string& sql);
    ~PlainStatement();
    PlainStatement(const PlainStatement&) = delete;
    PlainStatement& operator=(const PlainStatement&) = delete;

    void bind(int parameter, std::string_view text);
    void bind(int parameter, int number);
    bool next();
    void reset();
    void run(); // to its end, and back to its beginning
    sqlite3_stmt* handle() const { return m_statement; }
    QString text(int column) const;

private:
    Plain& m_connection;
    sqlite3_stmt* m_statement = nullptr;
};

// The rows of a query, cells joined by "|".
QStringList rowsOf(const QString& file, const std::string& sql);

// Throws when the rows differ, and names the first that does.
void requireSame(const QStringList& product, const QStringList& floor);

} // namespace tallyroom::bench
