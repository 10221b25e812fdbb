// A table of texts for a view.
#pragma once

#include "common/TextTable.h"

#include <QAbstractTableModel>

namespace tallyroom {

class TextTableModel : public QAbstractTableModel {
public:
    enum class Headings { Left, LikeTheirColumns };

    explicit TextTableModel(Headings headings = Headings::LikeTheirColumns)
        : m_headings(headings) {}

    const TextTable& table() const { return m_table; }
    void setTable(TextTable table); // a reset: the views' selections and the notes go
    // What there is to say of each row, or nothing: its cells' tooltip and description.
    void setNotes(QStringList notes);
    QString note(int row) const { return m_notes.value(row); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString descriptionOf(const QModelIndex& index) const;

    Headings m_headings;
    TextTable m_table;
    QStringList m_notes; // by row; those beyond the last have none
};

} // namespace tallyroom
