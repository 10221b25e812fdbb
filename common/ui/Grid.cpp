#include "common/ui/Grid.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>

namespace tallyroom {

Grid::Grid(QWidget* parent) : QTableView(parent) {
    setModel(&m_model);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + pixels(150));
    horizontalHeader()->setDefaultSectionSize(defaultWidth);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QWidget::customContextMenuRequested, this,
            [this](const QPoint& position) {
                Q_EMIT popupRequested(horizontalHeader()->viewport()->mapToGlobal(position));
            });
}

QString Grid::text(int row, int column) const {
    if (row < 0 || row >= rows() || column < 0 || column >= columns())
        return {};
    return row == 0 ? table().columns[static_cast<std::size_t>(column)].heading
                    : table().rows[static_cast<std::size_t>(row) - 1].value(column);
}

// A view under a screen reader needs a valid current index; it is not a selection.
void Grid::setContents(TextTable table, std::vector<int> widths) {
    const int scrolled = verticalScrollBar()->value();
    const int current = std::max(0, currentIndex().row());
    m_widths = std::move(widths);
    m_model.setTable(std::move(table));
    for (int column = 0; column < columns(); ++column)
        horizontalHeader()->resizeSection(column, m_widths[static_cast<std::size_t>(column)]);
    selectionModel()->setCurrentIndex(m_model.index(std::min(current, m_model.rowCount() - 1), 0),
                                      QItemSelectionModel::NoUpdate);
    updateGeometries();
    verticalScrollBar()->setValue(scrolled);
}

Grid::RowRange Grid::selectedRows() const {
    const QItemSelection selection = selectionModel()->selection();
    if (selection.isEmpty())
        return {0, 0};
    RowRange range{selection.front().top() + 1, selection.front().bottom() + 1};
    for (const QItemSelectionRange& part : selection) {
        range.first = std::min(range.first, part.top() + 1);
        range.last = std::max(range.last, part.bottom() + 1);
    }
    return range;
}

TextTable Grid::selectedTable() const {
    const RowRange selected = selectedRows();
    TextTable result{table().columns, {}};
    if (selected.first > 0 && !table().isBlank())
        result.rows.assign(table().rows.begin() + selected.first - 1,
                           table().rows.begin() + selected.last);
    return result;
}

void Grid::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Copy)) {
        QTableView::keyPressEvent(event);
        return;
    }
    const TextTable selected = selectedTable();
    if (!selected.rows.empty())
        QApplication::clipboard()->setText(tabSeparated(selected));
}

void Grid::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton)
        event->accept();
    else
        QTableView::mousePressEvent(event);
}

void Grid::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton)
        Q_EMIT popupRequested(event->globalPosition().toPoint());
    else
        QTableView::mouseReleaseEvent(event);
}

void Grid::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard)
        Q_EMIT popupRequested(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

} // namespace tallyroom
