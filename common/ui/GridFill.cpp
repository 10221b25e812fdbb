#include "common/ui/GridFill.h"

namespace tallyroom {

GridFill::GridFill(Grid& grid)
    : m_grid(grid), m_table{grid.table().columns, {QStringList()}}, m_widths(grid.widths()) {}

GridFill::~GridFill() {
    m_grid.setContents(std::move(m_table), std::move(m_widths));
}

void GridFill::setColumns(std::vector<TextTable::Column> columns) {
    m_table.columns = std::move(columns);
    m_widths.resize(m_table.columns.size(), Grid::defaultWidth);
}

void GridFill::addRow(const QStringList& cells) {
    m_table.rows.push_back(cells.mid(0, static_cast<qsizetype>(m_table.columns.size())));
}

void GridFill::removeEmptyRow() {
    Q_ASSERT(!m_table.rows.empty() && m_table.rows.front().isEmpty());
    m_table.rows.erase(m_table.rows.begin());
}

QString GridFill::text(int row, std::size_t column) const {
    return row == 0 ? m_table.columns[column].heading
                    : m_table.rows[static_cast<std::size_t>(row) - 1].value(
                          static_cast<qsizetype>(column));
}

void GridFill::AutoSizeColumns(TextWidths& measurer, int row, int column, bool force) {
    const int shownRow = row == -1 ? static_cast<int>(m_table.rows.size()) : row;
    const std::size_t first = column == -1 ? 0 : static_cast<std::size_t>(column);
    const std::size_t end = column == -1 ? m_widths.size() : first + 1;
    for (std::size_t at = first; at < end; ++at) {
        const int width = measurer.width(text(shownRow, at));
        if (force || width > m_widths[at])
            m_widths[at] = width;
    }
}

} // namespace tallyroom
