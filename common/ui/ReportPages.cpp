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
constexpr double smallestFont = 6.5; // before texts are elided
constexpr double signingHeight = 22; // of a row in which somebody signs
constexpr double hairline = 0.4;

// In ems.
constexpr double gap = 0.9; // between columns
constexpr double widestGap = 3;
constexpr double lineIndent = 1;    // of a line to write on, off the figures before it
constexpr double narrowestText = 6; // that a column of texts gives way to

constexpr int measuringSize = 100; // pixels to the em while measuring

QFont reportFont(bool bold) {
    QFont font;
    // Narrow figures first: a row has up to 19 columns.
    font.setFamilies(
        {QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("Sans Serif")});
    font.setStyleHint(QFont::SansSerif);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setBold(bold);
    return font;
}

QFontMetricsF measuringMetrics(bool bold) {
    QFont font = reportFont(bold);
    font.setPixelSize(measuringSize);
    return QFontMetricsF(font);
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

QString line(int underscores) {
    return QString(underscores, QLatin1Char('_'));
}

double indent(const ReportColumn& column) {
    return column.lineLength > 0 ? lineIndent : 0;
}

} // namespace

ReportWidths::ReportWidths(const GridReport& report) {
    const QFontMetricsF headings = measuringMetrics(true);
    const QFontMetricsF texts = measuringMetrics(false);
    for (std::size_t at = 0; at < report.columns.size(); ++at) {
        const ReportColumn& column = report.columns[at];
        double width = std::max(longestWord(headings, column.heading),
                                texts.horizontalAdvance(line(column.lineLength)));
        for (const QStringList& row : report.rows)
            width = std::max(width, texts.horizontalAdvance(row.value(static_cast<int>(at))));
        // A rounding in the printed font must not elide what fits.
        m_columns.push_back(width * 1.01 / measuringSize + indent(column));
    }
}

double ReportWidths::total() const {
    return std::accumulate(m_columns.begin(), m_columns.end(), 0.0) +
           gap * static_cast<double>(m_columns.size() - 1);
}

QPageLayout::Orientation ReportPages::orientation(const ReportWidths& widths,
                                                  const QPageLayout& layout) {
    QPageLayout upright = layout;
    upright.setOrientation(QPageLayout::Portrait);
    return widths.total() * uprightFont <= upright.paintRect(QPageLayout::Point).width()
               ? QPageLayout::Portrait
               : QPageLayout::Landscape;
}

ReportPages::ReportPages(const GridReport& report, const ReportWidths& widths, QSizeF page,
                         int resolution)
    : m_report(report), m_natural(widths), m_page(page), m_point(resolution / 72.0) {
    chooseFont();
    chooseColumnWidths();
    chooseHeights();
}

bool ReportPages::isElastic(std::size_t column) const {
    return m_report.columns[column].alignment == CellAlignment::Left &&
           m_report.columns[column].lineLength == 0;
}

// Below the smallest font only when the figures alone need more than the page: they are never cut.
void ReportPages::chooseFont() {
    const double width = m_page.width() / m_point;
    double least = m_natural.total();
    for (std::size_t at = 0; at < m_report.columns.size(); ++at) {
        if (isElastic(at))
            least -= std::max(0.0, m_natural.columns()[at] - narrowestText);
    }
    const double fitting = std::floor(width / m_natural.total() * 2) / 2;
    m_fontSize = std::min(std::clamp(fitting, smallestFont, largestFont), width / least);
}

void ReportPages::chooseColumnWidths() {
    const double em = m_fontSize * m_point;
    for (const double width : m_natural.columns())
        m_widths.push_back((width + gap) * em);
    m_widths.back() -= gap * em;
    const double spare = m_page.width() - m_natural.total() * em;
    if (spare < 0)
        narrowTexts(-spare);
    else
        spreadColumns(spare);
}

// The widest text columns are cut to one common width, the largest that lets all columns fit.
void ReportPages::narrowTexts(double excess) {
    std::vector<double*> texts;
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        if (isElastic(at))
            texts.push_back(&m_widths[at]);
    }
    std::sort(texts.begin(), texts.end(), [](const double* a, const double* b) { return *a < *b; });
    double left = -excess;
    for (const double* text : texts)
        left += *text;
    for (std::size_t at = 0; at < texts.size(); ++at) {
        *texts[at] = std::min(*texts[at], left / static_cast<double>(texts.size() - at));
        left -= *texts[at];
    }
}

// The gaps grow, but not so far that the eye loses the row.
void ReportPages::spreadColumns(double spare) {
    const double most = (widestGap - gap) * m_fontSize * m_point;
    const double each = std::min(most, spare / static_cast<double>(m_widths.size()));
    for (double& width : m_widths)
        width += each;
}

void ReportPages::chooseHeights() {
    m_top = lineHeight(titleSize) * 1.2 +
            static_cast<double>(m_report.details.size() + 1) * lineHeight(detailSize);
    const QFontMetricsF metrics(font(m_fontSize, true));
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        const QRectF room = cell(at, 0, m_page.height());
        m_headingHeight = std::max(
            m_headingHeight,
            metrics.boundingRect(room, Qt::TextWordWrap, m_report.columns[at].heading).height());
    }
    m_headingHeight += 3 * m_point;
    m_rowHeight = lineHeight(m_fontSize) * 1.2;
    for (const ReportColumn& column : m_report.columns) {
        if (column.lineLength > 0)
            m_rowHeight = std::max(m_rowHeight, signingHeight * m_point);
    }
    const double room = m_page.height() - m_top - m_headingHeight - 2 * lineHeight(footSize);
    m_rowsPerPage = static_cast<std::size_t>(std::max(1.0, std::floor(room / m_rowHeight)));
}

QFont ReportPages::font(double points, bool bold) const {
    QFont font = reportFont(bold);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(points * m_point))));
    return font;
}

double ReportPages::lineHeight(double points) const {
    return QFontMetricsF(font(points)).height();
}

int ReportPages::count() const {
    const std::size_t rows = m_report.rows.size();
    return static_cast<int>(std::max<std::size_t>(1, (rows + m_rowsPerPage - 1) / m_rowsPerPage));
}

void ReportPages::paint(QPainter& painter, int page) const {
    paintTop(painter);
    paintHeadings(painter);
    const std::size_t first = static_cast<std::size_t>(page - 1) * m_rowsPerPage;
    const std::size_t end = std::min(first + m_rowsPerPage, m_report.rows.size());
    painter.setFont(font(m_fontSize));
    double top = m_top + m_headingHeight;
    for (std::size_t row = first; row < end; ++row, top += m_rowHeight)
        paintRow(painter, row, top);
    paintFoot(painter, page);
}

QRectF ReportPages::cell(std::size_t column, double top, double height) const {
    const double left = std::accumulate(
        m_widths.begin(), m_widths.begin() + static_cast<std::ptrdiff_t>(column), 0.0);
    const bool isLast = column + 1 == m_widths.size();
    const double em = m_fontSize * m_point;
    const double indented = indent(m_report.columns[column]) * em;
    return {left + indented, top, m_widths[column] - indented - (isLast ? 0 : gap * em), height};
}

void ReportPages::paintTop(QPainter& painter) const {
    painter.setFont(font(titleSize, true));
    painter.drawText(QRectF(0, 0, m_page.width(), lineHeight(titleSize)), Qt::AlignLeft,
                     m_report.title);
    painter.setFont(font(detailSize));
    const QFontMetricsF metrics(painter.font());
    double top = lineHeight(titleSize) * 1.2;
    for (const QString& detail : m_report.details) {
        painter.drawText(QRectF(0, top, m_page.width(), metrics.height()), Qt::AlignLeft,
                         metrics.elidedText(detail, Qt::ElideRight, m_page.width()));
        top += metrics.height();
    }
}

void ReportPages::paintHeadings(QPainter& painter) const {
    painter.setFont(font(m_fontSize, true));
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        const ReportColumn& column = m_report.columns[at];
        painter.drawText(cell(at, m_top, m_headingHeight - 3 * m_point),
                         static_cast<int>(Qt::AlignBottom | aligned(column.alignment)) |
                             Qt::TextWordWrap,
                         column.heading);
    }
    const double bottom = m_top + m_headingHeight - m_point;
    painter.setPen(QPen(Qt::black, m_point));
    painter.drawLine(QPointF(0, bottom), QPointF(m_page.width(), bottom));
}

void ReportPages::paintRow(QPainter& painter, std::size_t row, double top) const {
    painter.setPen(Qt::black);
    const QFontMetricsF metrics(painter.font());
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        const auto place = aligned(m_report.columns[at].alignment) | Qt::AlignVCenter;
        painter.drawText(cell(at, top, m_rowHeight), static_cast<int>(place),
                         cellText(metrics, row, at));
    }
    painter.setPen(QPen(Qt::lightGray, hairline * m_point));
    painter.drawLine(QPointF(0, top + m_rowHeight), QPointF(m_page.width(), top + m_rowHeight));
}

// A line is as long as its column has room for.
QString ReportPages::cellText(const QFontMetricsF& metrics, std::size_t row,
                              std::size_t column) const {
    const double room = cell(column, 0, 0).width();
    if (m_report.columns[column].lineLength > 0)
        return line(static_cast<int>(room / metrics.horizontalAdvance(QLatin1Char('_'))));
    const QString text = m_report.rows[row].value(static_cast<int>(column));
    const bool isNatural = room >= m_natural.columns()[column] * m_fontSize * m_point;
    return isNatural ? text : metrics.elidedText(text, Qt::ElideRight, room);
}

void ReportPages::paintFoot(QPainter& painter, int page) const {
    painter.setPen(Qt::black);
    painter.setFont(font(footSize));
    const double height = lineHeight(footSize);
    const QRectF foot(0, m_page.height() - height, m_page.width(), height);
    painter.drawText(
        foot, Qt::AlignLeft,
        QStringLiteral("Printed %1 by %2")
            .arg(Dates::format(m_report.printedAt, QStringLiteral("mm/dd/yyyy hh:mm am/pm")),
                 m_report.printedBy));
    painter.drawText(foot, Qt::AlignRight, QStringLiteral("Page %1 of %2").arg(page).arg(count()));
}

} // namespace tallyroom
