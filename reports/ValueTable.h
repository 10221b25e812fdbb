// A table of values under headings: what a report shows, prints and exports.
#pragma once

#include "common/TextTable.h"
#include "store/Database.h"

namespace tallyroom {

// What the values of a column are. A Null is an empty cell in each.
enum class ValueKind {
    Text,
    Number,
    Minutes,   // a Long, shown as "01:30"; more than a day as "26:15"
    TimeOfDay, // a Date of which the time alone counts: "07:00"
    Day,       // a Date of which the day alone counts: "03/31/2024"
    Moment     // a Date: "03/31/2024 14:05"
};

struct ValueTable {
    struct Column {
        QString heading;
        ValueKind kind = ValueKind::Text;
        bool elastic = false; // on paper its texts may be elided where room is scarce
        // Above 0 there is a line to be written on in every row, of so many millimetres on paper:
        // the column has no values.
        double lineLength = 0;
        bool isBox = false; // to be ticked, instead of the line

        bool hasValues() const { return lineLength == 0; }
        // Numbers and amounts of time stand to the right.
        CellAlignment alignment() const;
    };

    QString caption; // above the table; empty where the report's title says it all
    std::vector<Column> columns;
    std::vector<Row> rows; // a value for each column
    // The last rows are sums or the like: sorting leaves them where they are.
    int sumRows = 0;

    // The columns with values, as texts.
    TextTable texts() const;
};

QString shownValue(ValueKind kind, const Variant& value);

// Whether the left value comes before the right one when a table is sorted by their column: numbers
// and dates by size, texts as the database orders them, and nothing before everything.
bool comesBefore(const Variant& left, const Variant& right);

// Sorts the rows by a column, those that are equal in it as they stand, the sums where they are.
void sortByColumn(ValueTable& table, std::size_t column, Qt::SortOrder order);

} // namespace tallyroom
