#include "host/screens/ShownTable.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTableView>

namespace tallyroom::host {

ShownTable::ShownTable(QTableView& view) : m_view(view) {
    view.setModel(&m_model);
    QHeaderView& header = *view.horizontalHeader();
    header.setSectionsClickable(true);
    header.setSortIndicatorShown(true);
    header.setSortIndicatorClearable(true);
    header.setSortIndicator(-1, Qt::AscendingOrder);
    connect(&header, &QHeaderView::sortIndicatorChanged, this, &ShownTable::sort);
    auto* copyKeys = new QShortcut(QKeySequence::Copy, &view, nullptr, nullptr, Qt::WidgetShortcut);
    connect(copyKeys, &QShortcut::activated, this, &ShownTable::copy);
    auto* sortKeys = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_S), &view, nullptr, nullptr,
                                   Qt::WidgetShortcut);
    connect(sortKeys, &QShortcut::activated, this, &ShownTable::sortByCurrent);
}

QString ShownTable::sortHeading() const {
    const int section = m_view.horizontalHeader()->sortIndicatorSection();
    return section < 0 ? QString()
                       : m_model.headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
}

void ShownTable::show(ValueTable table) {
    const QString sortedBy = sortHeading();
    m_given = std::move(table);
    m_columns.clear();
    for (std::size_t at = 0; at < m_given.columns.size(); ++at) {
        if (m_given.columns[at].hasValues())
            m_columns.push_back(at);
    }
    m_shown = m_given;
    putIntoView();
    if (sortHeading() == sortedBy)
        return sort();
    const QSignalBlocker quiet(m_view.horizontalHeader());
    m_view.horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
}

void ShownTable::putIntoView() {
    constexpr int columnGap = 8; // pixels
    QHeaderView& header = *m_view.horizontalHeader();
    m_model.setTable(m_shown.texts());
    header.setSortIndicatorShown(false); // which would take room in every column
    m_view.resizeColumnsToContents();
    header.setSortIndicatorShown(true);
    for (int column = 0; column < m_model.columnCount(); ++column)
        m_view.setColumnWidth(column, m_view.columnWidth(column) + columnGap);
    m_view.setCurrentIndex(m_model.index(0, 0));
}

void ShownTable::sort() {
    const QHeaderView& header = *m_view.horizontalHeader();
    const int section = header.sortIndicatorSection();
    m_shown = m_given;
    if (section >= 0 && section < m_model.columnCount()) {
        sortByColumn(m_shown, m_columns[static_cast<std::size_t>(section)],
                     header.sortIndicatorOrder());
        m_view.setColumnWidth(
            section, std::max(m_view.columnWidth(section), header.sectionSizeHint(section)));
    }
    m_model.setTable(m_shown.texts());
    m_view.setCurrentIndex(m_model.index(0, std::max(0, section)));
}

// As a click on the heading does.
void ShownTable::sortByCurrent() {
    QHeaderView& header = *m_view.horizontalHeader();
    const int section = m_view.currentIndex().column();
    const bool isSorted = header.sortIndicatorSection() == section;
    if (!isSorted)
        header.setSortIndicator(section, Qt::AscendingOrder);
    else if (header.sortIndicatorOrder() == Qt::AscendingOrder)
        header.setSortIndicator(section, Qt::DescendingOrder);
    else
        header.setSortIndicator(-1, Qt::AscendingOrder);
}

const Row* ShownTable::currentRow() const {
    const int row = m_view.currentIndex().row();
    const int rows = static_cast<int>(m_shown.rows.size()) - m_shown.sumRows;
    return row >= 0 && row < rows ? &m_shown.rows[static_cast<std::size_t>(row)] : nullptr;
}

void ShownTable::goTo(std::size_t column, const QString& text) {
    for (std::size_t row = 0; row < m_shown.rows.size(); ++row) {
        if (m_shown.rows[row][column].textOrEmpty() == text)
            m_view.setCurrentIndex(m_model.index(static_cast<int>(row), 0));
    }
}

void ShownTable::takeFocus() {
    m_view.setFocus();
}

void ShownTable::copy() const {
    QApplication::clipboard()->setText(tabSeparated(m_model.table()));
}

} // namespace tallyroom::host
