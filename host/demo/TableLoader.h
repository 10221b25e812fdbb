// Loading many rows into one table through the store.
#pragma once

#include "store/Database.h"

#include <QDateTime>
#include <QString>
#include <initializer_list>
#include <span>

namespace tallyroom::host {

// A value of a row: Null unless it is made from something.
class Cell : public Variant {
public:
    Cell() : Variant(Variant::null()) {}
    Cell(int number) : Variant(number) {}
    Cell(double number) : Variant(number) {}
    Cell(const QString& text) : Variant(text) {}
    Cell(const char* text) : Variant(QString::fromUtf8(text)) {}
    Cell(QDate day) : Variant(Dates::fromQDate(day)) {}
    Cell(const QDateTime& moment) : Variant(Dates::fromQDateTime(moment)) {}
    Cell(Date date) : Variant(date) {}
};

// The time of day so many minutes after a midnight.
Cell timeOfDay(int minutes);

// Collects rows and writes them in large portions.
class TableLoader {
public:
    using Columns = std::span<const char16_t* const>;

    // Rows take a cell for each of these columns of the table, in this order; the table's others
    // stay Null. The database must outlive the loader.
    TableLoader(Database& database, const char16_t* table, Columns columns);
    TableLoader(Database& database, const char16_t* table,
                std::initializer_list<const char16_t*> columns)
        : TableLoader(database, table, Columns(columns.begin(), columns.size())) {}

    // Throws std::logic_error for more cells than columns, or fewer; raises what an Insert raises.
    void insert(std::span<const Cell> cells);
    void insert(std::initializer_list<Cell> cells) {
        insert(std::span(cells.begin(), cells.size()));
    }

    // Writes what has been collected. Rows that are not followed by it are not written.
    void finish();

private:
    Database& m_database;
    QString m_table;
    QStringList m_columns;
    std::vector<Row> m_rows;
};

} // namespace tallyroom::host
