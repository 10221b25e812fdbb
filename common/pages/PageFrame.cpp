#include "common/pages/PageFrame.h"

#include <QFontMetricsF>
#include <algorithm>

namespace tallyroom {

namespace {

// In points.
constexpr double titleSize = 14;
constexpr double detailSize = 9;
constexpr double footSize = 8;

constexpr int detailLines = 3; // at most, for one detail

} // namespace

QFont reportFont(bool bold, int pixels) {
    QFont font;
    // Narrow figures first: a row has up to 19 columns.
    font.setFamilies(
        {QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("Sans Serif")});
    font.setStyleHint(QFont::SansSerif);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setBold(bold);
    font.setPixelSize(std::max(1, pixels));
    return font;
}

QString ReportFrame::documentName() const {
    return title + Dates::format(about.value_or(printedAt), QStringLiteral(" yyyy-mm-dd"));
}

PageFrame::PageFrame(const ReportFrame& frame, QSizeF page, double point)
    : m_frame(frame), m_page(page), m_point(point), m_roomTop(lineHeight(titleSize) * 1.2) {
    for (const QString& detail : m_frame.details)
        m_roomTop = detailRect(detail, m_roomTop).bottom();
    m_roomTop += lineHeight(detailSize);
}

QRectF PageFrame::room() const {
    return {0, m_roomTop, m_page.width(), m_page.height() - m_roomTop - 2 * lineHeight(footSize)};
}

QFont PageFrame::font(double points, bool bold) const {
    return reportFont(bold, static_cast<int>(points * m_point));
}

double PageFrame::lineHeight(double points) const {
    return QFontMetricsF(font(points)).height();
}

// Long details, such as the users of an audit, take a few lines.
QRectF PageFrame::detailRect(const QString& detail, double top) const {
    const QFontMetricsF metrics(font(detailSize));
    const QRectF room(0, top, m_page.width(), detailLines * metrics.height());
    const double height = metrics.boundingRect(room, Qt::TextWordWrap, detail).height();
    return {0, top, m_page.width(), std::min(height, room.height())};
}

void PageFrame::paint(QPainter& painter, int page, int pageCount) const {
    painter.setPen(Qt::black);
    paintTop(painter);
    paintFoot(painter, page, pageCount);
}

void PageFrame::paintTop(QPainter& painter) const {
    painter.setFont(font(titleSize, true));
    painter.drawText(QRectF(0, 0, m_page.width(), lineHeight(titleSize)), Qt::AlignLeft,
                     m_frame.title);
    painter.setFont(font(detailSize));
    const QFontMetricsF metrics(painter.font());
    double top = lineHeight(titleSize) * 1.2;
    for (const QString& detail : m_frame.details) {
        const QRectF place = detailRect(detail, top);
        // Wrapping leaves a part of each line empty.
        const double room = m_page.width() * (detailLines - 0.5);
        painter.drawText(place, static_cast<int>(Qt::AlignLeft) | Qt::TextWordWrap,
                         metrics.elidedText(detail, Qt::ElideRight, room));
        top = place.bottom();
    }
}

void PageFrame::paintFoot(QPainter& painter, int page, int pageCount) const {
    painter.setFont(font(footSize));
    const QFontMetricsF metrics(painter.font());
    const QRectF foot(0, m_page.height() - metrics.height(), m_page.width(), metrics.height());
    const QString number = QStringLiteral("Page %1 of %2").arg(page).arg(pageCount);
    const QString when = Dates::format(m_frame.printedAt, QStringLiteral("mm/dd/yyyy hh:mm am/pm"));
    const QString by =
        m_frame.printedBy.isEmpty() ? QString() : QStringLiteral(" by ") + m_frame.printedBy;
    const QString printed = QStringLiteral("Printed %1%2").arg(when, by);
    const double room = foot.width() - metrics.horizontalAdvance(number) - 2 * metrics.height();
    painter.drawText(foot, static_cast<int>(Qt::AlignLeft) | Qt::TextSingleLine,
                     metrics.elidedText(printed, Qt::ElideRight, room));
    painter.drawText(foot, static_cast<int>(Qt::AlignRight) | Qt::TextSingleLine, number);
}

} // namespace tallyroom
