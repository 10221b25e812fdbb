// A table as a printed report.
#pragma once

#include "common/TextTable.h"
#include "common/pages/PageSource.h"
#include "common/pages/TablePages.h"

#include <optional>

namespace tallyroom {

// What is printed: values, taken when the command is given.
class TableReport : public PageSource {
public:
    // Of a blank table the headings only. Each cell is printed in one line.
    TableReport(const TextTable& table, const QString& title, const QString& user);

    // The columns under these headings may give way; those that are not there are passed over.
    void makeElastic(const QStringList& headings);
    // Adds a column with a line to be written on, in every row.
    void addLine(const QString& heading, double millimetres);

    int rowCount() const { return static_cast<int>(m_table.rows.size()); }

    const ReportFrame& frame() const override { return head; }
    QPageLayout::Orientation orientation(const QPageLayout& paper) const override;
    std::unique_ptr<Pages> pages(QSizeF room, double point) const override;

    ReportFrame head;

private:
    // Measured when first asked for, once for all sizes of paper.
    const ColumnWidths& widths() const;

    ReportTable m_table;
    mutable std::optional<ColumnWidths> m_widths;
};

} // namespace tallyroom
