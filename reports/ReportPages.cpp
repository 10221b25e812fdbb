#include "reports/ReportPages.h"

#include "reports/ReportParts.h"

namespace tallyroom {

namespace {

constexpr double gapBetween = 14; // points

ReportTable printed(const ValueTable& table) {
    ReportTable result;
    for (const ValueTable::Column& column : table.columns)
        result.columns.push_back(
            {column.heading, column.alignment(), column.elastic, column.lineLength, column.isBox});
    for (const Row& row : table.rows) {
        QStringList cells;
        for (std::size_t at = 0; at < table.columns.size(); ++at)
            cells << shownValue(table.columns[at].kind, row[at]).simplified();
        result.rows.push_back(std::move(cells));
    }
    return result;
}

class StackedPages : public Pages {
public:
    StackedPages(QSizeF room, double gap) : m_room(room), m_gap(gap) {}

    void add(std::unique_ptr<ReportPart> part) {
        const int count = part->count();
        const double below = m_filled > 0 ? m_filled + m_gap : 0;
        const bool fits = count == 1 && below + part->heightOfLast() <= m_room.height();
        if (!fits || m_pages.empty())
            m_pages.emplace_back();
        m_pages.back().push_back({part.get(), 1, fits ? below : 0});
        for (int page = 2; page <= count; ++page)
            m_pages.push_back({{part.get(), page, 0}});
        m_filled = (fits ? below : 0) + part->heightOfLast();
        m_parts.push_back(std::move(part));
    }

    int count() const override { return std::max(1, static_cast<int>(m_pages.size())); }

    void paint(QPainter& painter, int page) const override {
        if (m_pages.empty())
            return;
        for (const Placed& placed : m_pages[static_cast<std::size_t>(page - 1)]) {
            painter.translate(0, placed.top);
            placed.part->paint(painter, placed.page);
            painter.translate(0, -placed.top);
        }
    }

private:
    struct Placed {
        const ReportPart* part;
        int page;   // of the part
        double top; // on the page, in pixels
    };

    QSizeF m_room;
    double m_gap;
    double m_filled = 0; // of the last page
    std::vector<std::unique_ptr<ReportPart>> m_parts;
    std::vector<std::vector<Placed>> m_pages;
};

} // namespace

ReportPages::ReportPages(const Report& report, const QString& user)
    : m_report(report), m_frame{report.title, report.details, user, Dates::now()} {
    for (const ValueTable& table : m_report.tables) {
        ReportTable onPaper = printed(table);
        ColumnWidths widths(onPaper);
        m_tables.push_back({std::move(onPaper), std::move(widths)});
    }
}

QPageLayout::Orientation ReportPages::orientation(const QPageLayout& paper) const {
    for (const Table& table : m_tables) {
        if (TablePages::orientation(table.widths, paper) == QPageLayout::Landscape)
            return QPageLayout::Landscape;
    }
    return QPageLayout::Portrait;
}

std::unique_ptr<Pages> ReportPages::pages(QSizeF room, double point) const {
    auto pages = std::make_unique<StackedPages>(room, gapBetween * point);
    if (!m_report.words.isEmpty())
        pages->add(wordsPart(m_report.words, room, point));
    for (const Chart& chart : m_report.charts)
        pages->add(chartPart(chart, room, point));
    for (std::size_t at = 0; at < m_tables.size(); ++at)
        pages->add(tablePart(m_report.tables[at].caption, m_tables[at].table, m_tables[at].widths,
                             room, point));
    if (!m_report.notes.isEmpty())
        pages->add(wordsPart(m_report.notes, room, point));
    return pages;
}

} // namespace tallyroom
