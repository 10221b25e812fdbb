#include "reports/ChartPainter.h"

#include "common/Units.h"
#include "common/pages/PageFrame.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace tallyroom {

namespace {

// In points.
constexpr double textSize = 8;
constexpr double gap = 4;
constexpr double lineChartHeight = 150;
constexpr double dot = 2.5;

QString amount(double minutes) {
    return TimeConversion::toTimeText(static_cast<std::int32_t>(std::lround(minutes)));
}

QColor faint(QColor ink, int alpha) {
    ink.setAlpha(alpha);
    return ink;
}

} // namespace

ChartPainter::ChartPainter(const Chart& chart, QSizeF room, double point)
    : m_chart(chart), m_room(room), m_point(point),
      m_font(reportFont(false, static_cast<int>(textSize * point))) {
    const QFontMetricsF metrics(m_font);
    m_rowHeight = metrics.height() * 1.15;
    for (const Chart::Point& each : m_chart.points) {
        m_labels = std::max(m_labels, metrics.horizontalAdvance(each.label));
        m_values = std::max(m_values, metrics.horizontalAdvance(amount(each.minutes)));
        m_most = std::max(m_most, each.minutes);
    }
    m_labels = std::min(m_labels, room.width() * 0.4) + gap * point;
    m_values += gap * point;
    // The first row tells the mean.
    m_barsPerPage =
        static_cast<std::size_t>(std::max(1.0, std::floor(room.height() / m_rowHeight) - 1));
}

int ChartPainter::count() const {
    if (m_chart.kind == Chart::Kind::Line)
        return 1;
    const std::size_t pages = (m_chart.points.size() + m_barsPerPage - 1) / m_barsPerPage;
    return static_cast<int>(std::max<std::size_t>(1, pages));
}

std::pair<std::size_t, std::size_t> ChartPainter::barsOf(int page) const {
    const std::size_t first = static_cast<std::size_t>(page - 1) * m_barsPerPage;
    return {first, std::min(first + m_barsPerPage, m_chart.points.size())};
}

double ChartPainter::height(int page) const {
    if (m_chart.kind == Chart::Kind::Line)
        return std::min(m_room.height(), lineChartHeight * m_point);
    const auto [first, end] = barsOf(page);
    return static_cast<double>(end - first + 1) * m_rowHeight;
}

void ChartPainter::paint(QPainter& painter, int page, const QColor& ink) const {
    painter.save();
    painter.setFont(m_font);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_chart.kind == Chart::Kind::Line)
        paintLine(painter, ink);
    else
        paintBars(painter, page, ink);
    painter.restore();
}

double ChartPainter::place(double minutes) const {
    const double length = m_room.width() - m_labels - m_values;
    return m_labels + std::max(0.0, minutes) / m_most * length;
}

void ChartPainter::paintBars(QPainter& painter, int page, const QColor& ink) const {
    double top = m_rowHeight;
    for (auto [at, end] = barsOf(page); at < end; ++at, top += m_rowHeight)
        paintBar(painter, m_chart.points[at], top, ink);
    if (m_chart.mean)
        paintMean(painter, 0, top, ink);
}

void ChartPainter::paintBar(QPainter& painter, const Chart::Point& point, double top,
                            const QColor& ink) const {
    painter.setPen(ink);
    const QFontMetricsF metrics(m_font);
    const double room = m_labels - gap * m_point;
    painter.drawText(QRectF(0, top, room, m_rowHeight),
                     static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine,
                     metrics.elidedText(point.label, Qt::ElideRight, room));
    const double end = place(point.minutes);
    painter.fillRect(QRectF(m_labels, top + m_rowHeight * 0.15, std::max(1.0, end - m_labels),
                            m_rowHeight * 0.7),
                     faint(ink, 110));
    painter.drawText(QRectF(end + gap * m_point, top, m_values, m_rowHeight),
                     static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine |
                         Qt::TextDontClip,
                     amount(point.minutes));
}

void ChartPainter::paintMean(QPainter& painter, double top, double bottom,
                             const QColor& ink) const {
    const double across = place(*m_chart.mean);
    painter.setPen(QPen(ink, m_point, Qt::DashLine));
    painter.drawLine(QPointF(across, top + m_rowHeight), QPointF(across, bottom));
    painter.setPen(ink);
    const QString text = QStringLiteral("Mean %1").arg(amount(*m_chart.mean));
    const double width = QFontMetricsF(m_font).horizontalAdvance(text);
    const double left = std::clamp(across - width / 2, 0.0, m_room.width() - width);
    painter.drawText(QRectF(left, top, width, m_rowHeight),
                     static_cast<int>(Qt::AlignCenter) | Qt::TextSingleLine | Qt::TextDontClip,
                     text);
}

QPolygonF ChartPainter::linePoints() const {
    const double bottom = height(1) - m_rowHeight;
    const double step =
        m_room.width() / static_cast<double>(std::max<std::size_t>(1, m_chart.points.size()));
    QPolygonF line;
    for (const Chart::Point& point : m_chart.points)
        line << QPointF((static_cast<double>(line.size()) + 0.5) * step,
                        bottom -
                            std::max(0.0, point.minutes) / m_most * (bottom - 2 * m_rowHeight));
    return line;
}

// A value stands where the line leaves room: under a point that lies lower than its neighbours,
// else above it. The labels are below all.
void ChartPainter::paintLine(QPainter& painter, const QColor& ink) const {
    const double bottom = height(1) - m_rowHeight;
    painter.setPen(QPen(faint(ink, 110), m_point / 2));
    painter.drawLine(QPointF(0, bottom), QPointF(m_room.width(), bottom));
    const QPolygonF line = linePoints();
    painter.setPen(QPen(ink, m_point));
    painter.drawPolyline(line);
    painter.setBrush(ink);
    const auto write = [&](double center, double top, const QString& text) {
        painter.drawText(QRectF(center, top, 0, m_rowHeight),
                         static_cast<int>(Qt::AlignCenter) | Qt::TextSingleLine | Qt::TextDontClip,
                         text);
    };
    for (qsizetype at = 0; at < line.size(); ++at) {
        const Chart::Point& point = m_chart.points[static_cast<std::size_t>(at)];
        const QPointF place = line[at];
        const double neighbours = (line[std::max<qsizetype>(0, at - 1)].y() +
                                   line[std::min(at + 1, line.size() - 1)].y()) /
                                  2;
        const double off = 2 * dot * m_point;
        const bool isBelow = neighbours < place.y() && place.y() + off + m_rowHeight < bottom;
        painter.drawEllipse(place, dot * m_point, dot * m_point);
        write(place.x(), isBelow ? place.y() + off : place.y() - off - m_rowHeight,
              amount(point.minutes));
        write(place.x(), bottom, point.label);
    }
}

} // namespace tallyroom
