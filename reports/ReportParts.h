// What follows each other on the pages of a report.
#pragma once

#include "common/pages/PageSource.h"
#include "common/pages/TablePages.h"
#include "reports/Report.h"

namespace tallyroom {

// Pages that know how much of the last one they leave to others.
class ReportPart : public Pages {
public:
    virtual double heightOfLast() const = 0; // pixels
};

// All for a room in pixels of a device with `point` pixels to the point.

// Paragraphs, lines as long as the room.
std::unique_ptr<ReportPart> wordsPart(const QStringList& paragraphs, QSizeF room, double point);

// The table and the widths must outlive the part.
std::unique_ptr<ReportPart> tablePart(const QString& caption, const ReportTable& table,
                                      const ColumnWidths& widths, QSizeF room, double point);

// The chart must outlive the part.
std::unique_ptr<ReportPart> chartPart(const Chart& chart, QSizeF room, double point);

} // namespace tallyroom
