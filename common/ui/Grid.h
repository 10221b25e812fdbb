// The flexible grid: a table whose first row is its heading, filled row by row.
#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QStringList>
#include <QTableView>
#include <vector>

namespace tallyroom {

// Codes of the grid control for the place of a text in its cell, vertically centred.
enum class CellAlignment { Left = 1, Right = 7 };

// Texts and alignments behind a Grid. Rows are numbered as the grid control numbers them: row 0 is
// the heading, the data begin at row 1.
class GridModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    friend class Grid;

private:
    std::vector<QStringList> m_rows{QStringList()}; // with the heading
    std::vector<CellAlignment> m_alignments;
};

class Grid : public QTableView {
    Q_OBJECT

public:
    explicit Grid(QWidget* parent = nullptr);

    int rows() const { return static_cast<int>(m_model.m_rows.size()); } // with the heading
    bool isEmpty() const; // no data: no rows, or the one empty row of a fill that found none
    int columns() const { return static_cast<int>(m_model.m_alignments.size()); }
    QString text(int row, int column) const; // "" outside the grid
    CellAlignment alignment(int column) const {
        return m_model.m_alignments[static_cast<std::size_t>(column)];
    }
    int columnWidthOf(int column) const { return m_widths[static_cast<std::size_t>(column)]; }

    // The changes below need a fill in progress. While it lasts nothing is painted, and at its end
    // no row is selected: see GridFill.
    void setHeading(int column, const QString& text, CellAlignment alignment);
    void setRowCount(int rows);
    void setColumnCount(int columns);
    void addRow(const QStringList& cells); // cells beyond the last column are dropped
    void insertRow(int row, const QStringList& cells);
    void removeRow(int row);
    void setColumnWidthOf(int column, int width);

    // First and last of the rows between the current row and the other end of the selection,
    // whichever way it was made. Both are 0, the heading, while nothing is selected.
    struct RowRange {
        int first;
        int last;
    };
    RowRange selectedRows() const;

    // The selected rows under their headings as tab-separated lines, as spreadsheets take them; ""
    // while nothing is selected.
    QString selectedText() const;

Q_SIGNALS:
    // The right mouse button was released over the grid, or its menu key pressed. The selection
    // stays as it is.
    void popupRequested(const QPoint& globalPosition);

protected:
    void keyPressEvent(QKeyEvent* event) override; // Ctrl+C copies selectedText()
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    friend class GridFill;
    QString line(int row) const;
    void beginFill();
    void endFill();

    GridModel m_model;
    std::vector<int> m_widths; // pixels
    int m_fills = 0;
};

// Scope of a fill: painting is off until the outermost one ends.
class GridFill {
public:
    explicit GridFill(Grid& grid) : m_grid(grid) { m_grid.beginFill(); }
    ~GridFill() { m_grid.endFill(); }
    GridFill(const GridFill&) = delete;
    GridFill& operator=(const GridFill&) = delete;

private:
    Grid& m_grid;
};

// What was measured in a font. There is one for all windows, since all grids carry the same font;
// it belongs to the application, so that it outlives a window and ends before the fonts do.
class KnownWidths : public QObject {
    Q_OBJECT

public:
    static KnownWidths& of(const QFontMetrics& metrics);

    // A whole text is measured once: what shaping makes of it, kerning and ligatures, depends on
    // nothing but the text and the font. Another font begins anew.
    int width(const QString& text);

private:
    explicit KnownWidths(const QFontMetrics& metrics);
    void follow(const QFontMetrics& metrics);

    QFontMetrics m_metrics;
    QHash<QString, int> m_widths;
};

// Width of texts in the font of a widget. Most cells of a grid repeat, in a fill, from one fill to
// the next and from one opening of its window to the next, so what was measured is kept.
class TextMeasurer {
public:
    explicit TextMeasurer(QWidget* widget);
    int width(const QString& text) { return m_known.width(text); }

private:
    KnownWidths& m_known;
};

// Widens columns to the text in `row` plus the width of a "W"; `force` sets the width even if that
// makes the column narrower. Row −1 is the last row, column −1 means every column.
void AutoSizeColumns(Grid& grid, TextMeasurer& measurer, int row, int column, bool force);

} // namespace tallyroom
