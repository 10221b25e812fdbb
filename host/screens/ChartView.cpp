#include "host/screens/ChartView.h"

#include "common/Units.h"

#include <QFontInfo>
#include <cmath>

namespace tallyroom::host {

namespace {

constexpr int margin = 8;         // pixels
constexpr double anyHeight = 1e6; // a screen can be scrolled

// What a screen reader says of it.
QString spoken(const Chart& chart) {
    QStringList lines;
    for (const Row& row : pointsOf(chart).rows)
        lines << row[0].textOrEmpty() + QLatin1Char(' ') + minutesAsTime(row[1]);
    return lines.join(QStringLiteral("; "));
}

} // namespace

void ChartView::setChart(Chart chart) {
    m_chart = std::move(chart);
    setAccessibleName(m_chart.caption);
    setAccessibleDescription(spoken(m_chart));
    takeHeight();
    update();
}

// Its letters are as large as the window's.
ChartPainter ChartView::painter() const {
    constexpr double textSize = 8; // points, on paper
    return {m_chart, QSizeF(std::max(1, width() - 2 * margin), anyHeight),
            QFontInfo(font()).pixelSize() / textSize};
}

void ChartView::takeHeight() {
    setMinimumHeight(static_cast<int>(std::ceil(painter().height(1))) + 2 * margin);
}

void ChartView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    takeHeight();
}

void ChartView::paintEvent(QPaintEvent*) {
    QPainter device(this);
    device.translate(margin, margin);
    painter().paint(device, 1, palette().color(QPalette::WindowText));
}

} // namespace tallyroom::host
