#include "common/ui/Grid.h"

#include "common/ui/Twips.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>

namespace tallyroom {

namespace {

QVariant qtAlignment(CellAlignment alignment) {
    return static_cast<int>(Qt::AlignVCenter |
                            (alignment == CellAlignment::Right ? Qt::AlignRight : Qt::AlignLeft));
}

} // namespace

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size()) - 1;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_alignments.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (index.row() >= rowCount() || index.column() >= columnCount())
        return {}; // asked for while a fill is under way
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
        return m_rows[static_cast<std::size_t>(index.row()) + 1].value(index.column());
    if (role == Qt::TextAlignmentRole)
        return qtAlignment(m_alignments[static_cast<std::size_t>(index.column())]);
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return m_rows.front().value(section);
    if (role == Qt::TextAlignmentRole)
        return qtAlignment(CellAlignment::Left);
    return {};
}

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
    horizontalHeader()->setDefaultSectionSize(pixels(960));
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
    if (row < 0 || row >= rows())
        return {};
    return m_model.m_rows[static_cast<std::size_t>(row)].value(column);
}

void Grid::setHeading(int column, const QString& text, CellAlignment alignment) {
    m_model.m_rows.front()[column] = text;
    m_model.m_alignments[static_cast<std::size_t>(column)] = alignment;
}

void Grid::setRowCount(int rows) {
    m_model.m_rows.resize(static_cast<std::size_t>(rows));
}

void Grid::setColumnCount(int columns) {
    m_model.m_alignments.resize(static_cast<std::size_t>(columns), CellAlignment::Left);
    m_widths.resize(static_cast<std::size_t>(columns), horizontalHeader()->defaultSectionSize());
    m_model.m_rows.front().resize(columns);
}

void Grid::addRow(const QStringList& cells) {
    insertRow(rows(), cells);
}

void Grid::insertRow(int row, const QStringList& cells) {
    m_model.m_rows.insert(m_model.m_rows.begin() + row, cells.mid(0, columns()));
}

void Grid::removeRow(int row) {
    m_model.m_rows.erase(m_model.m_rows.begin() + row);
}

void Grid::setColumnWidthOf(int column, int width) {
    m_widths[static_cast<std::size_t>(column)] = width;
}

bool Grid::isEmpty() const {
    return std::all_of(m_model.m_rows.begin() + 1, m_model.m_rows.end(),
                       [](const QStringList& row) { return row.join(QString()).isEmpty(); });
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

// A tab or a line break inside a text would begin a new cell or row, and a quote would hide those
// that follow.
QString Grid::line(int row) const {
    QStringList cells;
    for (int column = 0; column < columns(); ++column) {
        QString cell = text(row, column).simplified();
        if (cell.contains(QLatin1Char('"')))
            cell = QLatin1Char('"') + cell.replace(QLatin1Char('"'), QLatin1String("\"\"")) +
                   QLatin1Char('"');
        cells.append(cell);
    }
    return cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
}

QString Grid::selectedText() const {
    const RowRange selected = selectedRows();
    if (selected.first == 0 || isEmpty())
        return {};
    QString lines = line(0);
    for (int row = selected.first; row <= selected.last; ++row)
        lines += line(row);
    return lines;
}

void Grid::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Copy)) {
        QTableView::keyPressEvent(event);
        return;
    }
    const QString lines = selectedText();
    if (!lines.isEmpty())
        QApplication::clipboard()->setText(lines);
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

void Grid::beginFill() {
    if (m_fills++ == 0)
        m_model.beginResetModel();
}

// A view under a screen reader needs a valid current index; it is not a selection. The current row
// and the place to which the user had scrolled stay, so that work goes on where it was.
void Grid::endFill() {
    if (--m_fills > 0)
        return;
    const int current = std::max(0, std::min(currentIndex().row(), m_model.rowCount() - 1));
    const int scrolled = verticalScrollBar()->value();
    m_model.endResetModel();
    for (int column = 0; column < columns(); ++column)
        horizontalHeader()->resizeSection(column, columnWidthOf(column));
    selectionModel()->setCurrentIndex(m_model.index(current, 0), QItemSelectionModel::NoUpdate);
    updateGeometries();
    verticalScrollBar()->setValue(scrolled);
}

KnownWidths::KnownWidths(const QFontMetrics& metrics) : QObject(qApp), m_metrics(metrics) {}

KnownWidths& KnownWidths::of(const QFontMetrics& metrics) {
    auto* known = qApp->findChild<KnownWidths*>(QString(), Qt::FindDirectChildrenOnly);
    if (!known)
        known = new KnownWidths(metrics);
    known->follow(metrics);
    return *known;
}

int KnownWidths::width(const QString& text) {
    constexpr qsizetype maximumTexts = 50'000; // a few megabytes
    const auto known = m_widths.constFind(text);
    if (known != m_widths.constEnd())
        return *known;
    if (m_widths.size() >= maximumTexts)
        m_widths.clear();
    return *m_widths.insert(text, m_metrics.horizontalAdvance(QLatin1Char('W') + text));
}

void KnownWidths::follow(const QFontMetrics& metrics) {
    if (metrics == m_metrics)
        return;
    m_metrics = metrics;
    m_widths.clear();
}

TextMeasurer::TextMeasurer(QWidget* widget) : m_known(KnownWidths::of(widget->fontMetrics())) {}

void AutoSizeColumns(Grid& grid, TextMeasurer& measurer, int row, int column, bool force) {
    const GridFill fill(grid);
    const int shownRow = row == -1 ? grid.rows() - 1 : row;
    const int first = column == -1 ? 0 : column;
    const int last = column == -1 ? grid.columns() - 1 : column;
    for (int at = first; at <= last; ++at) {
        const int width = measurer.width(grid.text(shownRow, at));
        if (force || width > grid.columnWidthOf(at))
            grid.setColumnWidthOf(at, width);
    }
}

} // namespace tallyroom
