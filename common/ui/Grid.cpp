#include "common/ui/Grid.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

namespace tallyroom {

namespace {

class CellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->font.setItalic(!index.data(Qt::ToolTipRole).toString().isEmpty());
        option->fontMetrics = QFontMetrics(option->font);
    }
};

} // namespace

Grid::Grid(QWidget* parent) : QTableView(parent) {
    setModel(&m_model);
    setItemDelegate(new CellDelegate(this));
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

void Grid::setCurrentRow(int row) {
    selectionModel()->setCurrentIndex(m_model.index(std::clamp(row, 1, std::max(1, rows() - 1)) - 1,
                                                    std::max(0, currentIndex().column())),
                                      QItemSelectionModel::NoUpdate);
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

// Whichever keys are held: Shift belongs to Shift+F10 here, and would extend a selection. A later
// Shift begins at this row.
void Grid::selectOnly(int row) {
    setSelectionMode(QAbstractItemView::SingleSelection);
    selectRow(row);
    setSelectionMode(QAbstractItemView::ContiguousSelection);
}

void Grid::keyboardSearch(const QString& letters) {
    const auto& headings = table().columns;
    const auto found = std::ranges::find(headings, m_searchHeading, &TextTable::Column::heading);
    if (found != headings.end() && currentIndex().isValid())
        selectionModel()->setCurrentIndex(
            currentIndex().siblingAtColumn(static_cast<int>(found - headings.begin())),
            QItemSelectionModel::NoUpdate);
    QTableView::keyboardSearch(letters);
}

void Grid::copySelected() const {
    const TextTable selected = selectedTable();
    if (!selected.rows.empty())
        QApplication::clipboard()->setText(tabSeparated(selected));
}

// Keys alone skip nobody: the row on which the last command left the user is the next one, not the
// one below it.
void Grid::keyPressEvent(QKeyEvent* event) {
    const bool isStep = (event->key() == Qt::Key_Down || event->key() == Qt::Key_Up) &&
                        (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == 0;
    if (event->matches(QKeySequence::Copy))
        copySelected();
    else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
        requestPopupByKey();
    else if (isStep && !selectionModel()->hasSelection() && currentIndex().isValid())
        selectOnly(currentIndex().row());
    else
        QTableView::keyPressEvent(event);
}

void Grid::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton)
        event->accept();
    else
        QTableView::mousePressEvent(event);
}

void Grid::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::RightButton) {
        QTableView::mouseReleaseEvent(event);
        return;
    }
    const QModelIndex under = indexAt(event->position().toPoint());
    if (under.isValid() && !selectionModel()->isSelected(under))
        selectOnly(under.row());
    Q_EMIT popupRequested(event->globalPosition().toPoint());
}

void Grid::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard)
        requestPopupByKey();
}

void Grid::requestPopupByKey() {
    if (!selectionModel()->hasSelection())
        selectOnly(currentIndex().row());
    scrollTo(currentIndex());
    Q_EMIT popupRequested(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

} // namespace tallyroom
