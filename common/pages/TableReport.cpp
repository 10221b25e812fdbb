#include "common/pages/TableReport.h"

namespace tallyroom {

TableReport::TableReport(const TextTable& table, const QString& title, const QString& user)
    : head{title, {}, user, Dates::now()} {
    for (const TextTable::Column& column : table.columns)
        m_table.columns.push_back({column.heading, column.alignment});
    if (table.isBlank())
        return;
    for (QStringList row : table.rows) {
        for (QString& cell : row)
            cell = cell.simplified();
        m_table.rows.push_back(std::move(row));
    }
}

void TableReport::makeElastic(const QStringList& headings) {
    for (ReportColumn& column : m_table.columns)
        column.elastic = column.elastic || headings.contains(column.heading);
}

void TableReport::addLine(const QString& heading, double millimetres) {
    m_table.columns.push_back({heading, CellAlignment::Left, false, millimetres});
}

const ColumnWidths& TableReport::widths() const {
    if (!m_widths)
        m_widths.emplace(m_table);
    return *m_widths;
}

QPageLayout::Orientation TableReport::orientation(const QPageLayout& paper) const {
    return TablePages::orientation(widths(), paper);
}

std::unique_ptr<Pages> TableReport::pages(QSizeF room, double point) const {
    return std::make_unique<TablePages>(m_table, widths(), room, point);
}

} // namespace tallyroom
