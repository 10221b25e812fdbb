// What a report holds, whatever it becomes: lines of text, a table to export, pages.
#pragma once

#include "reports/ValueTable.h"

#include <optional>

namespace tallyroom {

struct Chart {
    enum class Kind {
        Bars, // one a point, lying, the first on top, its label before it
        Line  // from left to right
    };
    // Amounts of time.
    struct Point {
        QString label;
        double minutes;
    };

    QString caption;
    Kind kind = Kind::Bars;
    std::vector<Point> points;
    std::optional<double> mean = {}; // minutes; drawn across all points
};

// What a chart shows, as a table: a line a point, and the mean.
ValueTable pointsOf(const Chart& chart);

struct Report {
    QString title;
    QStringList details; // under the title: the period, the order, the group …
    QStringList words;   // paragraphs before all else
    std::vector<Chart> charts;
    std::vector<ValueTable> tables;
    QStringList notes; // after all else: what is left out, and why

    // What a check found; reports that check nothing find nothing.
    int findings = 0;
};

} // namespace tallyroom
