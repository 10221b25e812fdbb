#include "canvass/CanvassFill.h"

#include "canvass/CanvassColumns.h"

namespace tallyroom::CanvassFill {

namespace {

void writeHeading(Grid& grid, const std::vector<CanvassColumn>& columns) {
    grid.setColumnCount(static_cast<int>(columns.size()));
    int at = 0;
    for (const CanvassColumn& column : columns)
        grid.setHeading(at++, column.header,
                        column.isRightAligned() ? CellAlignment::Right : CellAlignment::Left);
}

QStringList rowTexts(const Recordset& row, const std::vector<CanvassColumn>& columns,
                     bool blankForZero) {
    QStringList cells;
    for (const CanvassColumn& column : columns)
        cells.append(cellText(column, row.field(column.field), blankForZero));
    return cells;
}

} // namespace

void begin(Grid& grid, TextMeasurer& measurer) {
    AutoSizeColumns(grid, measurer, 0, -1, true);
    grid.insertRow(1, {});
    grid.setRowCount(2);
}

void fill(Grid& grid, TextMeasurer& measurer, Recordset& rows, const CanvassOptions& options) {
    const std::vector<CanvassColumn> columns = canvassColumns(options);
    writeHeading(grid, columns);
    AutoSizeColumns(grid, measurer, 0, -1, false);
    for (; !rows.eof(); rows.moveNext()) {
        grid.addRow(rowTexts(rows, columns, options.blankForZero));
        AutoSizeColumns(grid, measurer, -1, -1, false);
    }
    grid.removeRow(1);
}

} // namespace tallyroom::CanvassFill
