#include "common/ui/ReportPages.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace tallyroom {

namespace {

// In points.
constexpr double titleSize = 14;
constexpr double detailSize = 9;
constexpr double footSize = 8;
constexpr double largestFont = 10;
constexpr double uprightFont = 9;    // the smallest for which a page stays upright
constexpr double readableFont = 6.5; // below, elastic columns give way first
constexpr double smallestFont = 3;   // for pages of no sensible size
constexpr double signingHeight = 24; // of a row in which somebody signs
constexpr double underLine = 4;      // between such a line and the next row
constexpr double hairline = 0.4;

// In ems.
constexpr double gap = 0.9; // between columns
constexpr double widestGap = 3;
constexpr double narrowestElastic = 8; // that a column gives way to
constexpr double lineIndent = 1;       // of a line to write on, off the figures before it

constexpr double leastLine = 0.65; // of a line's length, where room is scarce
constexpr int detailLines = 3;     // at most, for one detail
constexpr double pointsPerMillimetre = 72 / 25.4;
constexpr int measuringSize = 100; // pixels to the em while measuring

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

Qt::Alignment aligned(CellAlignment alignment) {
    return alignment == CellAlignment::Right ? Qt::AlignRight : Qt::AlignLeft;
}

double longestWord(const QFontMetricsF& metrics, const QString& heading) {
    double width = 0;
    for (const QString& word : heading.split(QLatin1Char(' ')))
        width = std::max(width, metrics.horizontalAdvance(word));
    return width;
}

bool isLine(const ReportColumn& column) {
    return column.lineLength > 0;
}

double sum(const std::vector<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0);
}

} // namespace

ReportWidths::ReportWidths(const GridReport& report) {
    const QFontMetricsF headings(reportFont(true, measuringSize));
    const QFontMetricsF texts(reportFont(false, measuringSize));
    for (std::size_t at = 0; at < report.columns.size(); ++at) {
        const ReportColumn& column = report.columns[at];
        double width = longestWord(headings, column.heading);
        for (const QStringList& row : report.rows)
            width = std::max(width, texts.horizontalAdvance(row.value(static_cast<int>(at))));
        // Hints and rounding make some printed sizes a little wider.
        m_columns.push_back(isLine(column) ? lineIndent : width * 1.01 / measuringSize);
        m_lines += column.lineLength * leastLine * pointsPerMillimetre;
    }
}

double ReportWidths::total() const {
    return m_columns.empty() ? 0 : sum(m_columns) + gap * static_cast<double>(m_columns.size() - 1);
}

QPageLayout::Orientation ReportPages::orientation(const ReportWidths& widths,
                                                  const QPageLayout& layout) {
    QPageLayout upright = layout;
    upright.setOrientation(QPageLayout::Portrait);
    const double width = upright.paintRect(QPageLayout::Point).width();
    return widths.total() * uprightFont + widths.lines() <= width ? QPageLayout::Portrait
                                                                  : QPageLayout::Landscape;
}

ReportPages::ReportPages(const GridReport& report, const ReportWidths& widths, QSizeF page,
                         int resolution)
    : m_report(report), m_natural(widths), m_page(page), m_point(resolution / 72.0) {
    chooseFont();
    chooseColumnWidths();
    chooseHeights();
}

void ReportPages::chooseFont() {
    const double width = m_page.width() / m_point - m_natural.lines();
    double least = m_natural.total();
    for (std::size_t at = 0; at < m_report.columns.size(); ++at) {
        if (m_report.columns[at].elastic)
            least -= std::max(0.0, m_natural.columns()[at] - narrowestElastic);
    }
    double points = largestFont;
    if (least > 0) {
        const double fitting = std::floor(width / m_natural.total() * 2) / 2;
        points = std::min(std::clamp(fitting, readableFont, largestFont), width / least);
    }
    m_em = std::max(1, static_cast<int>(std::max(points, smallestFont) * m_point));
}

void ReportPages::chooseColumnWidths() {
    if (m_report.columns.empty())
        return;
    for (std::size_t at = 0; at < m_report.columns.size(); ++at) {
        const double line =
            m_report.columns[at].lineLength * leastLine * pointsPerMillimetre * m_point;
        m_widths.push_back((m_natural.columns()[at] + gap) * m_em + line);
    }
    m_widths.back() -= gap * m_em;
    const double spare = m_page.width() - sum(m_widths);
    if (spare < 0)
        narrowColumns(-spare);
    else
        spreadColumns(lengthenLines(spare));
}

// The widest elastic columns are cut to one common width, the largest that lets all columns fit.
void ReportPages::narrowColumns(double excess) {
    std::vector<double*> elastic;
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        if (m_report.columns[at].elastic)
            elastic.push_back(&m_widths[at]);
    }
    std::sort(elastic.begin(), elastic.end(),
              [](const double* a, const double* b) { return *a < *b; });
    double left = -excess;
    for (const double* width : elastic)
        left += *width;
    for (std::size_t at = 0; at < elastic.size(); ++at) {
        *elastic[at] = std::min(*elastic[at], left / static_cast<double>(elastic.size() - at));
        left -= *elastic[at];
    }
}

double ReportPages::lengthenLines(double spare) {
    const double wanted = m_natural.lines() / leastLine * (1 - leastLine) * m_point;
    const double share = wanted > 0 ? std::min(1.0, spare / wanted) : 0;
    for (std::size_t at = 0; at < m_widths.size(); ++at)
        m_widths[at] += m_report.columns[at].lineLength * (1 - leastLine) * pointsPerMillimetre *
                        m_point * share;
    return spare - wanted * share;
}

// The gaps grow, but not so far that the eye loses the row.
void ReportPages::spreadColumns(double spare) {
    const double each =
        std::min((widestGap - gap) * m_em, spare / static_cast<double>(m_widths.size()));
    for (double& width : m_widths)
        width += each;
}

void ReportPages::chooseHeights() {
    m_top = lineHeight(titleSize) * 1.2;
    for (const QString& detail : m_report.details)
        m_top = detailRect(detail, m_top).bottom();
    m_top += lineHeight(detailSize);
    const QFontMetricsF metrics(rowFont(true));
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        const QRectF room = cell(at, 0, m_page.height());
        const QString& heading = m_report.columns[at].heading;
        m_headingHeight = std::max(m_headingHeight,
                                   metrics.boundingRect(room, Qt::TextWordWrap, heading).height());
    }
    m_headingHeight += 3 * m_point;
    m_rowHeight = QFontMetricsF(rowFont()).height() * 1.2;
    if (hasLines())
        m_rowHeight = std::max(m_rowHeight, signingHeight * m_point);
    const double room = m_page.height() - m_top - m_headingHeight - 2 * lineHeight(footSize);
    m_rowsPerPage = static_cast<std::size_t>(std::max(1.0, std::floor(room / m_rowHeight)));
}

QFont ReportPages::font(double points, bool bold) const {
    return reportFont(bold, static_cast<int>(points * m_point));
}

QFont ReportPages::rowFont(bool bold) const {
    return reportFont(bold, m_em);
}

double ReportPages::lineHeight(double points) const {
    return QFontMetricsF(font(points)).height();
}

int ReportPages::count() const {
    const std::size_t rows = m_report.rows.size();
    return static_cast<int>(std::max<std::size_t>(1, (rows + m_rowsPerPage - 1) / m_rowsPerPage));
}

void ReportPages::paint(QPainter& painter, int page) const {
    painter.setLayoutDirection(Qt::LeftToRight); // the columns run so in every language
    painter.setPen(Qt::black);
    paintTop(painter);
    paintHeadings(painter);
    const std::size_t first = static_cast<std::size_t>(page - 1) * m_rowsPerPage;
    const std::size_t end = std::min(first + m_rowsPerPage, m_report.rows.size());
    painter.setFont(rowFont());
    double top = m_top + m_headingHeight;
    for (std::size_t row = first; row < end; ++row, top += m_rowHeight)
        paintRow(painter, row, top);
    paintFoot(painter, page);
}

QRectF ReportPages::cell(std::size_t column, double top, double height) const {
    const double left = std::accumulate(
        m_widths.begin(), m_widths.begin() + static_cast<std::ptrdiff_t>(column), 0.0);
    const double indent = isLine(m_report.columns[column]) ? lineIndent * m_em : 0;
    const double after = column + 1 == m_widths.size() ? 0 : gap * m_em;
    return {left + indent, top, m_widths[column] - indent - after, height};
}

// Long details, such as the users of an audit, take a few lines.
QRectF ReportPages::detailRect(const QString& detail, double top) const {
    const QFontMetricsF metrics(font(detailSize));
    const QRectF room(0, top, m_page.width(), detailLines * metrics.height());
    const double height = metrics.boundingRect(room, Qt::TextWordWrap, detail).height();
    return {0, top, m_page.width(), std::min(height, room.height())};
}

void ReportPages::paintTop(QPainter& painter) const {
    painter.setFont(font(titleSize, true));
    painter.drawText(QRectF(0, 0, m_page.width(), lineHeight(titleSize)), Qt::AlignLeft,
                     m_report.title);
    painter.setFont(font(detailSize));
    const QFontMetricsF metrics(painter.font());
    double top = lineHeight(titleSize) * 1.2;
    for (const QString& detail : m_report.details) {
        const QRectF place = detailRect(detail, top);
        // Wrapping leaves a part of each line empty.
        const double room = m_page.width() * (detailLines - 0.5);
        painter.drawText(place, static_cast<int>(Qt::AlignLeft) | Qt::TextWordWrap,
                         metrics.elidedText(detail, Qt::ElideRight, room));
        top = place.bottom();
    }
}

void ReportPages::paintHeadings(QPainter& painter) const {
    painter.setFont(rowFont(true));
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        const ReportColumn& column = m_report.columns[at];
        painter.drawText(cell(at, m_top, m_headingHeight - 3 * m_point),
                         static_cast<int>(Qt::AlignBottom | aligned(column.alignment)) |
                             Qt::TextWordWrap | Qt::TextDontClip,
                         column.heading);
    }
    const double bottom = m_top + m_headingHeight - m_point;
    painter.setPen(QPen(Qt::black, m_point));
    painter.drawLine(QPointF(0, bottom), QPointF(m_page.width(), bottom));
}

// Texts stand on one level with the lines to write on, which leave the room above them free.
void ReportPages::paintRow(QPainter& painter, std::size_t row, double top) const {
    painter.setPen(Qt::black);
    const QFontMetricsF metrics(painter.font());
    const double height = m_rowHeight - (hasLines() ? underLine * m_point : 0);
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        const auto place = aligned(m_report.columns[at].alignment) |
                           (hasLines() ? Qt::AlignBottom : Qt::AlignVCenter);
        painter.drawText(cell(at, top, height),
                         static_cast<int>(place) | Qt::TextSingleLine | Qt::TextDontClip,
                         cellText(metrics, row, at));
    }
    painter.setPen(QPen(Qt::lightGray, hairline * m_point));
    painter.drawLine(QPointF(0, top + m_rowHeight), QPointF(m_page.width(), top + m_rowHeight));
}

QString ReportPages::cellText(const QFontMetricsF& metrics, std::size_t row,
                              std::size_t column) const {
    const double room = cell(column, 0, 0).width();
    if (isLine(m_report.columns[column])) {
        const double underscore = metrics.horizontalAdvance(QLatin1Char('_'));
        return QString(static_cast<int>(room / underscore), QLatin1Char('_'));
    }
    const QString text = m_report.rows[row].value(static_cast<int>(column));
    return m_report.columns[column].elastic ? metrics.elidedText(text, Qt::ElideRight, room) : text;
}

void ReportPages::paintFoot(QPainter& painter, int page) const {
    painter.setPen(Qt::black);
    painter.setFont(font(footSize));
    const QFontMetricsF metrics(painter.font());
    const QRectF foot(0, m_page.height() - metrics.height(), m_page.width(), metrics.height());
    const QString number = QStringLiteral("Page %1 of %2").arg(page).arg(count());
    const QString when =
        Dates::format(m_report.printedAt, QStringLiteral("mm/dd/yyyy hh:mm am/pm"));
    const QString printed = QStringLiteral("Printed %1 by %2").arg(when, m_report.printedBy);
    const double room = foot.width() - metrics.horizontalAdvance(number) - 2 * metrics.height();
    painter.drawText(foot, static_cast<int>(Qt::AlignLeft) | Qt::TextSingleLine,
                     metrics.elidedText(printed, Qt::ElideRight, room));
    painter.drawText(foot, static_cast<int>(Qt::AlignRight) | Qt::TextSingleLine, number);
}

} // namespace tallyroom
