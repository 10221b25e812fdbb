#include "common/TextTableModel.h"

namespace tallyroom {

namespace {

QVariant placeOf(CellAlignment alignment) {
    return QVariant((alignment == CellAlignment::Right ? Qt::AlignRight : Qt::AlignLeft) |
                    Qt::AlignVCenter);
}

} // namespace

void TextTableModel::setTable(TextTable table) {
    beginResetModel();
    m_table = std::move(table);
    m_notes.clear();
    endResetModel();
}

void TextTableModel::setNotes(QStringList notes) {
    if (notes == m_notes || rowCount() == 0 || columnCount() == 0)
        return;
    m_notes = std::move(notes);
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1),
                       {Qt::ToolTipRole, Qt::AccessibleDescriptionRole});
}

int TextTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_table.rows.size());
}

int TextTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_table.columns.size());
}

QVariant TextTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return m_table.rows[static_cast<std::size_t>(index.row())].value(index.column());
    if (role == Qt::AccessibleDescriptionRole)
        return descriptionOf(index);
    if (role == Qt::TextAlignmentRole)
        return placeOf(m_table.columns[static_cast<std::size_t>(index.column())].alignment);
    if (role == Qt::ToolTipRole)
        return note(index.row());
    return {};
}

// A screen reader says it after the cell's text.
QString TextTableModel::descriptionOf(const QModelIndex& index) const {
    const QString place =
        QStringLiteral("%1, row %2")
            .arg(m_table.columns[static_cast<std::size_t>(index.column())].heading)
            .arg(index.row() + 1);
    const QString known = note(index.row());
    return known.isEmpty() ? place : place + QStringLiteral("; ") + known;
}

QVariant TextTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= columnCount())
        return {};
    const TextTable::Column& column = m_table.columns[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return column.heading;
    if (role == Qt::TextAlignmentRole)
        return placeOf(m_headings == Headings::Left ? CellAlignment::Left : column.alignment);
    return {};
}

} // namespace tallyroom
