// The pages of a printed table.
#pragma once

#include "common/TextTable.h"
#include "common/pages/PageSource.h"

#include <QFont>
#include <vector>

namespace tallyroom {

struct ReportColumn {
    QString heading;
    CellAlignment alignment = CellAlignment::Left;
    bool elastic = false; // its texts may be elided when the columns need more than a page
    // Above 0 every row has a line here to be written on, as long as this, or a little shorter
    // where room is scarce. In millimetres.
    double lineLength = 0;
    bool isBox = false; // to be ticked, instead of the line
};

struct ReportTable {
    std::vector<ReportColumn> columns;
    std::vector<QStringList> rows; // a text for each column that is no line
};

// Width of each column's widest text and of its heading's longest word, in ems of the font. They
// do not depend on the page, so that they are measured once for a report.
class ColumnWidths {
public:
    explicit ColumnWidths(const ReportTable& table);

    const std::vector<double>& columns() const { return m_columns; }
    // Of all columns with the gaps between them. Lines to write on, which do not grow with the
    // font, count with their headings only; lines() is what they need at least, in points.
    double total() const;
    double lines() const { return m_lines; }

private:
    std::vector<double> m_columns;
    double m_lines = 0;
};

// The font is as large as the columns allow. Columns that do not fit in a readable one give way if
// they are elastic, the widest first, and their longest texts are elided; when that is not enough
// the font gets smaller still. Nothing else is ever cut.
class TablePages : public Pages {
public:
    // See PageSource::pages(). The table and the widths must outlive the pages.
    TablePages(const ReportTable& table, const ColumnWidths& widths, QSizeF room, double point);

    // Upright unless the columns need the longer side of the paper.
    static QPageLayout::Orientation orientation(const ColumnWidths& widths,
                                                const QPageLayout& paper);

    int count() const override; // a table without rows is its headings
    void paint(QPainter& painter, int page) const override;
    double height(int page) const; // that its rows take, with the headings

private:
    std::pair<std::size_t, std::size_t> rowsOf(int page) const; // the first, and behind the last
    void chooseFont();
    void chooseColumnWidths();
    void narrowColumns(double excess);
    double lengthenLines(double spare); // the rest of the spare room
    void spreadColumns(double spare);
    void chooseHeights();

    double writingHeight() const; // points
    bool hasLines() const { return m_natural.lines() > 0; }
    QFont rowFont(bool bold = false) const;
    QRectF cell(std::size_t column, double top, double height) const;
    void paintHeadings(QPainter& painter) const;
    void paintRow(QPainter& painter, std::size_t row, double top) const;
    void paintBox(QPainter& painter, const QRectF& place) const;
    QString cellText(const QFontMetricsF& metrics, std::size_t row, std::size_t column) const;

    const ReportTable& m_table;
    const ColumnWidths& m_natural;
    QSizeF m_room;
    double m_point;               // pixels of the device
    int m_em = 1;                 // of the rows' font, in pixels
    std::vector<double> m_widths; // pixels, with the gap to the next column
    double m_headingHeight = 0;
    double m_rowHeight = 0;
    std::size_t m_rowsPerPage = 1;
};

} // namespace tallyroom
