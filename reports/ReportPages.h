// A report on paper.
#pragma once

#include "common/pages/PageSource.h"
#include "common/pages/TablePages.h"
#include "reports/Report.h"

#include <optional>

namespace tallyroom {

// Words, charts, tables and notes follow each other. What fits on what is left of a page is put
// there; what takes several pages begins on a page of its own. Headings are repeated.
class ReportPages : public PageSource {
public:
    ReportPages(const Report& report, const QString& user);

    const ReportFrame& frame() const override { return m_frame; }
    QPageLayout::Orientation orientation(const QPageLayout& paper) const override;
    std::unique_ptr<Pages> pages(QSizeF room, double point) const override;

private:
    struct Table {
        ReportTable table;
        ColumnWidths widths;
    };

    Report m_report;
    ReportFrame m_frame;
    std::vector<Table> m_tables; // as those of the report
};

} // namespace tallyroom
