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

    // First and last of the rows between the current row and the other end of the selection,
    // whichever way it was made. Both are 0, the heading, while nothing is selected.
    struct RowRange {
        int first;
        int last;
    };
    RowRange selectedRows() const;
    // Their table; without rows while nothing is selected or the grid has no data.
    TextTable selectedTable() const;

Q_SIGNALS:
    // The right mouse button was released over the grid, or its menu key pressed. The selection
    // stays as it is.
    void popupRequested(const QPoint& globalPosition);

protected:
    void keyPressEvent(QKeyEvent* event) override; // Ctrl+C copies the selected table
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    TextTableModel m_model{TextTableModel::Headings::Left};
    std::vector<int> m_widths;
};

} // namespace tallyroom
