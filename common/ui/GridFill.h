// Filling a grid.
#pragma once

#include "common/ui/Grid.h"
#include "common/ui/TextWidths.h"

namespace tallyroom {

// A grid is filled aside, begun with the headings and widths that it has and one empty row, and
// shows what came in when the fill ends, however it ends. Rows are numbered as the grid numbers
// them: row 0 is the heading.
class GridFill {
public:
    explicit GridFill(Grid& grid); // which must outlive the fill
    ~GridFill();
    GridFill(const GridFill&) = delete;
    GridFill& operator=(const GridFill&) = delete;

    void setColumns(std::vector<TextTable::Column> columns); // one more has the default width
    void addRow(const QStringList& cells); // cells beyond the last column are dropped
    void removeEmptyRow();                 // the one at the beginning; once

    // Widens columns to the text in `row` plus the width of a "W"; `force` sets the width even if
    // that makes the column narrower. Row −1 is the last row, column −1 means every column.
    void AutoSizeColumns(TextWidths& measurer, int row, int column, bool force);

private:
    QString text(int row, std::size_t column) const;

    Grid& m_grid;
    TextTable m_table;
    std::vector<int> m_widths; // pixels, of each column
};

} // namespace tallyroom
