// Fast loading of many rows into one table of a file that nobody else uses yet.
#pragma once

#include <QDateTime>
#include <QString>
#include <SQLiteCpp/SQLiteCpp.h>
#include <initializer_list>
#include <span>
#include <string>
#include <variant>

namespace tallyroom::host {

// Null, a whole number, a fraction, or UTF-8 text in the form in which the store keeps it.
using Cell = std::variant<std::monostate, int, double, std::string>;

inline constexpr std::monostate nullCell;

// Texts of the store: a day or moment, and a time of day of that many minutes.
std::string dayText(QDate day);
std::string momentText(const QDateTime& moment);
std::string timeText(int minutes);

std::string utf8(const QString& text);

class TableLoader {
public:
    using Columns = std::span<const char16_t* const>;

    // Rows take a cell for each of these columns of the table, in this order; the table's others
    // stay Null. The database must outlive the loader. Throws SQLite::Exception for a column that
    // is not there.
    TableLoader(SQLite::Database& database, const char16_t* table, Columns columns);
    TableLoader(SQLite::Database& database, const char16_t* table,
                std::initializer_list<const char16_t*> columns)
        : TableLoader(database, table, Columns(columns.begin(), columns.size())) {}

    // Throws std::logic_error for more cells than columns, or fewer.
    void insert(std::span<const Cell> cells);
    void insert(std::initializer_list<Cell> cells) {
        insert(std::span(cells.begin(), cells.size()));
    }

private:
    SQLite::Statement m_statement;
    std::size_t m_columns; // how many
};

// A file open for loading: rows become visible with commit(). Nothing of it is meant to survive a
// failure, so it is written without a journal.
class LoadedFile {
public:
    explicit LoadedFile(const QString& path);

    SQLite::Database& database() { return m_database; }
    void commit() { m_transaction.commit(); }

private:
    static SQLite::Database& prepared(SQLite::Database& database);

    SQLite::Database m_database;
    SQLite::Transaction m_transaction;
};

} // namespace tallyroom::host
