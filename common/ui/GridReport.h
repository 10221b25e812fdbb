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
    int lineLength = 0; // in underscores; above 0 every row has a line here to be written on
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

    // A column in which every row has a line to be written on.
    void addLine(const QString& heading, int underscores);
};

// Asks whether the report is to be printed, then shows it in a preview from which it goes to a
// printer or into a PDF file. Leaving either writes nothing. What cannot be written is reported.
void printReport(QWidget* parent, const GridReport& report);

} // namespace tallyroom
