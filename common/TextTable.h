// A table of texts under headings: what a grid shows, a report prints and a text file carries away.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace tallyroom {

// Codes of the grid control for the place of a text in its cell, vertically centred.
enum class CellAlignment { Left = 1, Right = 7 };

struct TextTable {
    struct Column {
        QString heading;
        CellAlignment alignment = CellAlignment::Left;
    };
    std::vector<Column> columns;
    std::vector<QStringList> rows; // a cell for each column; those that a row lacks are empty

    bool isBlank() const; // no rows, or empty cells only
};

// The headings and rows as tab-separated lines, as spreadsheets take them.
QString tabSeparated(const TextTable& table);

// The same as lines for a screen of one pitch: every column as wide as its widest text.
QString aligned(const TextTable& table);

} // namespace tallyroom
