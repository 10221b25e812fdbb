// A grid as a printed report.
#pragma once

#include "common/Dates.h"
#include "common/ui/Grid.h"

#include <QString>
#include <QStringList>
#include <QWidget>
#include <vector>

namespace tallyroom {

struct ReportColumn {
    QString heading;
    CellAlignment alignment = CellAlignment::Left;
    bool elastic = false; // its texts may be elided when the columns need more than a page
    // Above 0 every row has a line here to be written on, as long as this, or a little shorter
    // where room is scarce. In millimetres.
    double lineLength = 0;
};

// What is printed: plain values, taken when the command is given.
struct GridReport {
    QString title;
    QStringList details; // lines under the title of every page
    QString printedBy;
    Date printedAt;
    std::vector<ReportColumn> columns;
    std::vector<QStringList> rows; // a text for each column that is no line

    // The grid as it stands, without the empty row of a grid that holds no data.
    static GridReport of(const Grid& grid, const QString& title, const QString& user);

    // The columns under these headings may give way; those that are not there are passed over.
    void makeElastic(const QStringList& headings);
    void addLine(const QString& heading, double millimetres);
};

// Asks whether the report is to be printed, then shows it in a preview from which it goes to a
// printer or into a PDF file. Leaving either writes nothing. What cannot be written is reported.
void printReport(QWidget* parent, const GridReport& report);

} // namespace tallyroom
