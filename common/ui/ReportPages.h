// The pages of a printed report.
#pragma once

#include "common/ui/GridReport.h"

#include <QFont>
#include <QPageLayout>
#include <QPainter>
#include <vector>

namespace tallyroom {

// Width of each column's widest text and of its heading's longest word, in ems of the font. They
// do not depend on the page, so that they are measured once for a report.
class ReportWidths {
public:
    explicit ReportWidths(const GridReport& report);

    const std::vector<double>& columns() const { return m_columns; }
    // Of all columns with the gaps between them. Lines to write on, which do not grow with the
    // font, count with their headings only; lines() is what they need at least, in points.
    double total() const;
    double lines() const { return m_lines; }

private:
    std::vector<double> m_columns;
    double m_lines = 0;
};

// A report laid out for pages of one size. The font is as large as the columns allow. Columns that
// do not fit in a readable one give way if they are elastic, the widest first, and their longest
// texts are elided; when that is not enough the font gets smaller still. Nothing else is ever cut.
class ReportPages {
public:
    // `page` is the printable area in pixels of a device with `resolution` pixels to the inch. The
    // report and the widths must outlive the pages.
    ReportPages(const GridReport& report, const ReportWidths& widths, QSizeF page, int resolution);

    // Upright unless the columns need the longer side of the paper.
    static QPageLayout::Orientation orientation(const ReportWidths& widths,
                                                const QPageLayout& layout);

    int count() const; // at least 1: a report without rows is its headings
    void paint(QPainter& painter, int page) const; // pages are counted from 1

private:
    void chooseFont();
    void chooseColumnWidths();
    void narrowColumns(double excess);
    double lengthenLines(double spare); // the rest of the spare room
    void spreadColumns(double spare);
    void chooseHeights();

    bool hasLines() const { return m_natural.lines() > 0; }
    QFont font(double points, bool bold = false) const;
    QFont rowFont(bool bold = false) const;
    double lineHeight(double points) const;
    QRectF detailRect(const QString& detail, double top) const;
    QRectF cell(std::size_t column, double top, double height) const;
    void paintTop(QPainter& painter) const;
    void paintHeadings(QPainter& painter) const;
    void paintRow(QPainter& painter, std::size_t row, double top) const;
    void paintFoot(QPainter& painter, int page) const;
    QString cellText(const QFontMetricsF& metrics, std::size_t row, std::size_t column) const;

    const GridReport& m_report;
    const ReportWidths& m_natural;
    QSizeF m_page;
    double m_point;               // pixels of the device
    int m_em = 1;                 // of the rows' font, in pixels
    std::vector<double> m_widths; // pixels, with the gap to the next column
    double m_top = 0;             // where the headings begin
    double m_headingHeight = 0;
    double m_rowHeight = 0;
    std::size_t m_rowsPerPage = 1;
};

} // namespace tallyroom
