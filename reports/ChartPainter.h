// Charts, drawn in black and greys: they read without colour.
#pragma once

#include "reports/Report.h"

#include <QFont>
#include <QPainter>
#include <QPolygonF>
#include <QSizeF>

namespace tallyroom {

// A chart laid out for a room, on paper or on a screen, in pixels of a device with `point` pixels
// to the point. The chart must outlive the painter.
class ChartPainter {
public:
    ChartPainter(const Chart& chart, QSizeF room, double point);

    int count() const; // pages; a line has one
    double height(int page) const;
    // The painter's origin is the upper left corner of the room. `ink` is what is drawn with.
    void paint(QPainter& painter, int page, const QColor& ink = Qt::black) const;

private:
    std::pair<std::size_t, std::size_t> barsOf(int page) const; // the first, and behind the last
    void paintBars(QPainter& painter, int page, const QColor& ink) const;
    void paintBar(QPainter& painter, const Chart::Point& point, double top,
                  const QColor& ink) const;
    void paintMean(QPainter& painter, double top, double bottom, const QColor& ink) const;
    QPolygonF linePoints() const; // of a line chart, in pixels
    void paintLine(QPainter& painter, const QColor& ink) const;
    double place(double minutes) const; // of a value in a bar chart, in pixels from the left

    const Chart& m_chart;
    QSizeF m_room;
    double m_point;
    QFont m_font;
    double m_rowHeight;
    double m_labels = 0; // width of the bars' labels
    double m_values = 0; // width of the values behind the bars
    double m_most = 1;   // minutes of the longest bar, the highest point
    std::size_t m_barsPerPage = 1;
};

} // namespace tallyroom
