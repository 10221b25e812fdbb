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
    double total() const;

private:
    std::vector<double> m_columns;
};

// A report laid out for pages of one size. The font is as large as the columns allow. When they do
// not fit even in the smallest one, the widest columns of texts give way and their longest texts
// are elided; figures and lines keep their widths as long as they can.
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
    bool isElastic(std::size_t column) const; // texts, which may be elided
    void narrowTexts(double excess);
    void spreadColumns(double spare);
    void chooseHeights();

    QFont font(double points, bool bold = false) const;
    double lineHeight(double points) const;
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
    double m_fontSize = 0;        // of the rows, in points
    std::vector<double> m_widths; // pixels, with the gap to the next column
    double m_top = 0;             // where the headings begin
    double m_headingHeight = 0;
    double m_rowHeight = 0;
    std::size_t m_rowsPerPage = 1;
};

} // namespace tallyroom
