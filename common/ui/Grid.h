// The flexible grid: a table whose first row is its heading. GridFill fills it.
#pragma once

#include "common/TextTableModel.h"
#include "common/ui/Twips.h"

#include <QTableView>
#include <vector>

namespace tallyroom {

// Rows are numbered as the grid control numbers them: row 0 is the heading, the data begin at
// row 1.
class Grid : public QTableView {
    Q_OBJECT

public:
    static constexpr int defaultWidth = pixels(960); // of a column

    explicit Grid(QWidget* parent = nullptr);

    int rows() const { return static_cast<int>(table().rows.size()) + 1; } // with the heading
    int columns() const { return static_cast<int>(table().columns.size()); }
    QString text(int row, int column) const; // "" outside the grid
    // A grid without data has no rows or, after a fill that found none, an empty one.
    const TextTable& table() const { return m_model.table(); }
    const std::vector<int>& widths() const { return m_widths; } // pixels, of each column

    // Exchanges what the grid shows. No row is selected then; the current row and the place to
    // which the user had scrolled stay, so that work goes on where it was.
    void setContents(TextTable table, std::vector<int> widths);

    // What there is to say of each row from the first data row on, or nothing. A row with a note is
    // slanted, which takes no more room, and the note is its tooltip. New contents have none.
    void setNotes(QStringList notes) { m_model.setNotes(std::move(notes)); }
    QString note(int row) const { return m_model.note(row - 1); }

    // First and last of the rows between the current row and the other end of the selection,
    // whichever way it was made. Both are 0, the heading, while nothing is selected.
    struct RowRange {
        int first;
        int last;
    };
    RowRange selectedRows() const;
    // Where the next key begins; selects nothing.
    void setCurrentRow(int row);
    // Their table; without rows while nothing is selected or the grid has no data.
    TextTable selectedTable() const;

    // Typed letters find rows by the column with this heading, wherever the current cell is; by the
    // current column where there is none.
    void setSearchHeading(const QString& heading) { m_searchHeading = heading; }
    void keyboardSearch(const QString& letters) override;

Q_SIGNALS:
    // The right mouse button was released over the grid, or the menu key or Shift+F10 pressed. What
    // the menu is to act on is selected by then: the row under the pointer unless it is in the
    // selection, and by key the current row where nothing is selected. Beside the rows and in the
    // heading the selection stays as it is.
    void popupRequested(const QPoint& globalPosition);

protected:
    // Ctrl+C copies the selected table. While nothing is selected, Up and Down select the current
    // row before they leave it.
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void selectOnly(int row); // counted from 0
    void copySelected() const;
    void requestPopupByKey();

    TextTableModel m_model{TextTableModel::Headings::Left};
    std::vector<int> m_widths;
    QString m_searchHeading;
};

} // namespace tallyroom
