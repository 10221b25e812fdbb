#include "common/pages/TablePages.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace tallyroom {

namespace {

// In points.
constexpr double largestFont = 10;
constexpr double uprightFont = 9;    // the smallest for which a page stays upright
constexpr double readableFont = 6.5; // below, elastic columns give way first
constexpr double smallestFont = 3;   // for pages of no sensible size
constexpr double signingHeight = 24; // of a row in which somebody signs
constexpr double notingHeight = 17;  // of a row in which something short is written
constexpr double underLine = 4;      // between such a line and the next row
constexpr double hairline = 0.4;

// In ems.
constexpr double gap = 0.9; // between columns
constexpr double widestGap = 3;
constexpr double narrowestElastic = 8; // that a column gives way to
constexpr double lineIndent = 1;       // of a line to write on, off the figures before it

constexpr double longestNote = 20; // millimetres of a line, above which it is for a signature
constexpr double boxSize = 0.55;   // of a row's height

constexpr double leastLine = 0.65; // of a line's length, where room is scarce
constexpr double pointsPerMillimetre = 72 / 25.4;
constexpr int measuringSize = 100; // pixels to the em while measuring

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

ColumnWidths::ColumnWidths(const ReportTable& table) {
    const QFontMetricsF headings(reportFont(true, measuringSize));
    const QFontMetricsF texts(reportFont(false, measuringSize));
    for (std::size_t at = 0; at < table.columns.size(); ++at) {
        const ReportColumn& column = table.columns[at];
        double width = longestWord(headings, column.heading);
        for (const QStringList& row : table.rows)
            width = std::max(width, texts.horizontalAdvance(row.value(static_cast<int>(at))));
        // Hints and rounding make some printed sizes a little wider.
        m_columns.push_back(isLine(column) ? lineIndent : width * 1.01 / measuringSize);
        m_lines += column.lineLength * leastLine * pointsPerMillimetre;
    }
}

double ColumnWidths::total() const {
    return m_columns.empty() ? 0 : sum(m_columns) + gap * static_cast<double>(m_columns.size() - 1);
}

QPageLayout::Orientation TablePages::orientation(const ColumnWidths& widths,
                                                 const QPageLayout& paper) {
    QPageLayout upright = paper;
    upright.setOrientation(QPageLayout::Portrait);
    const double width = upright.paintRect(QPageLayout::Point).width();
    return widths.total() * uprightFont + widths.lines() <= width ? QPageLayout::Portrait
                                                                  : QPageLayout::Landscape;
}

TablePages::TablePages(const ReportTable& table, const ColumnWidths& widths, QSizeF room,
                       double point)
    : m_table(table), m_natural(widths), m_room(room), m_point(point) {
    chooseFont();
    chooseColumnWidths();
    chooseHeights();
}

void TablePages::chooseFont() {
    const double width = m_room.width() / m_point - m_natural.lines();
    double least = m_natural.total();
    for (std::size_t at = 0; at < m_table.columns.size(); ++at) {
        if (m_table.columns[at].elastic)
            least -= std::max(0.0, m_natural.columns()[at] - narrowestElastic);
    }
    double points = largestFont;
    if (least > 0) {
        const double fitting = std::floor(width / m_natural.total() * 2) / 2;
        points = std::min(std::clamp(fitting, readableFont, largestFont), width / least);
    }
    m_em = std::max(1, static_cast<int>(std::max(points, smallestFont) * m_point));
}

void TablePages::chooseColumnWidths() {
    if (m_table.columns.empty())
        return;
    for (std::size_t at = 0; at < m_table.columns.size(); ++at) {
        const double line =
            m_table.columns[at].lineLength * leastLine * pointsPerMillimetre * m_point;
        m_widths.push_back((m_natural.columns()[at] + gap) * m_em + line);
    }
    m_widths.back() -= gap * m_em;
    const double spare = m_room.width() - sum(m_widths);
    if (spare < 0)
        narrowColumns(-spare);
    else
        spreadColumns(lengthenLines(spare));
}

// The widest elastic columns are cut to one common width, the largest that lets all columns fit.
void TablePages::narrowColumns(double excess) {
    std::vector<double*> elastic;
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        if (m_table.columns[at].elastic)
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

double TablePages::lengthenLines(double spare) {
    const double wanted = m_natural.lines() / leastLine * (1 - leastLine) * m_point;
    const double share = wanted > 0 ? std::min(1.0, spare / wanted) : 0;
    for (std::size_t at = 0; at < m_widths.size(); ++at)
        m_widths[at] += m_table.columns[at].lineLength * (1 - leastLine) * pointsPerMillimetre *
                        m_point * share;
    return spare - wanted * share;
}

// The gaps grow, but not so far that the eye loses the row.
void TablePages::spreadColumns(double spare) {
    const double each =
        std::min((widestGap - gap) * m_em, spare / static_cast<double>(m_widths.size()));
    for (double& width : m_widths)
        width += each;
}

void TablePages::chooseHeights() {
    const QFontMetricsF metrics(rowFont(true));
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        const QRectF room = cell(at, 0, m_room.height());
        const QString& heading = m_table.columns[at].heading;
        m_headingHeight = std::max(m_headingHeight,
                                   metrics.boundingRect(room, Qt::TextWordWrap, heading).height());
    }
    m_headingHeight += 3 * m_point;
    m_rowHeight = QFontMetricsF(rowFont()).height() * 1.2;
    if (hasLines())
        m_rowHeight = std::max(m_rowHeight, writingHeight() * m_point);
    const double room = m_room.height() - m_headingHeight;
    m_rowsPerPage = static_cast<std::size_t>(std::max(1.0, std::floor(room / m_rowHeight)));
}

double TablePages::writingHeight() const {
    const bool isSigned = std::ranges::any_of(m_table.columns, [](const ReportColumn& column) {
        return column.lineLength > longestNote;
    });
    return isSigned ? signingHeight : notingHeight;
}

QFont TablePages::rowFont(bool bold) const {
    return reportFont(bold, m_em);
}

int TablePages::count() const {
    const std::size_t rows = m_table.rows.size();
    return static_cast<int>(std::max<std::size_t>(1, (rows + m_rowsPerPage - 1) / m_rowsPerPage));
}

std::pair<std::size_t, std::size_t> TablePages::rowsOf(int page) const {
    const std::size_t first = static_cast<std::size_t>(page - 1) * m_rowsPerPage;
    return {first, std::min(first + m_rowsPerPage, m_table.rows.size())};
}

double TablePages::height(int page) const {
    const auto [first, end] = rowsOf(page);
    return m_headingHeight + static_cast<double>(end - first) * m_rowHeight;
}

void TablePages::paint(QPainter& painter, int page) const {
    painter.setPen(Qt::black);
    paintHeadings(painter);
    painter.setFont(rowFont());
    double top = m_headingHeight;
    for (auto [row, end] = rowsOf(page); row < end; ++row, top += m_rowHeight)
        paintRow(painter, row, top);
}

QRectF TablePages::cell(std::size_t column, double top, double height) const {
    const double left = std::accumulate(
        m_widths.begin(), m_widths.begin() + static_cast<std::ptrdiff_t>(column), 0.0);
    const double indent = isLine(m_table.columns[column]) ? lineIndent * m_em : 0;
    const double after = column + 1 == m_widths.size() ? 0 : gap * m_em;
    return {left + indent, top, m_widths[column] - indent - after, height};
}

void TablePages::paintHeadings(QPainter& painter) const {
    painter.setFont(rowFont(true));
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        const ReportColumn& column = m_table.columns[at];
        painter.drawText(cell(at, 0, m_headingHeight - 3 * m_point),
                         static_cast<int>(Qt::AlignBottom | aligned(column.alignment)) |
                             Qt::TextWordWrap | Qt::TextDontClip,
                         column.heading);
    }
    const double bottom = m_headingHeight - m_point;
    painter.setPen(QPen(Qt::black, m_point));
    painter.drawLine(QPointF(0, bottom), QPointF(m_room.width(), bottom));
}

// Texts stand on one level with the lines to write on, which leave the room above them free.
void TablePages::paintRow(QPainter& painter, std::size_t row, double top) const {
    painter.setPen(Qt::black);
    const QFontMetricsF metrics(painter.font());
    const double height = m_rowHeight - (hasLines() ? underLine * m_point : 0);
    for (std::size_t at = 0; at < m_widths.size(); ++at) {
        if (m_table.columns[at].isBox) {
            paintBox(painter, cell(at, top, m_rowHeight));
            continue;
        }
        const auto place = aligned(m_table.columns[at].alignment) |
                           (hasLines() ? Qt::AlignBottom : Qt::AlignVCenter);
        painter.drawText(cell(at, top, height),
                         static_cast<int>(place) | Qt::TextSingleLine | Qt::TextDontClip,
                         cellText(metrics, row, at));
    }
    painter.setPen(QPen(Qt::lightGray, hairline * m_point));
    painter.drawLine(QPointF(0, top + m_rowHeight), QPointF(m_room.width(), top + m_rowHeight));
}

void TablePages::paintBox(QPainter& painter, const QRectF& place) const {
    const double size = boxSize * m_rowHeight;
    painter.setPen(QPen(Qt::black, hairline * m_point * 1.5));
    painter.drawRect(QRectF(place.left(), place.center().y() - size / 2, size, size));
    painter.setPen(Qt::black);
}

QString TablePages::cellText(const QFontMetricsF& metrics, std::size_t row,
                             std::size_t column) const {
    const double room = cell(column, 0, 0).width();
    if (isLine(m_table.columns[column])) {
        const double underscore = metrics.horizontalAdvance(QLatin1Char('_'));
        return QString(static_cast<int>(room / underscore), QLatin1Char('_'));
    }
    const QString text = m_table.rows[row].value(static_cast<int>(column));
    return m_table.columns[column].elastic ? metrics.elidedText(text, Qt::ElideRight, room) : text;
}

} // namespace tallyroom
