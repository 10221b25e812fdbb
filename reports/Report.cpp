#include "reports/Report.h"

#include <cmath>

namespace tallyroom {

namespace {

Variant wholeMinutes(double minutes) {
    return static_cast<std::int32_t>(std::lround(minutes));
}

} // namespace

ValueTable pointsOf(const Chart& chart) {
    ValueTable table{
        chart.caption, {{QString()}, {QStringLiteral("Time"), ValueKind::Minutes}}, {}};
    for (const Chart::Point& point : chart.points)
        table.rows.push_back({point.label, wholeMinutes(point.minutes)});
    if (chart.mean)
        table.rows.push_back({QStringLiteral("Mean"), wholeMinutes(*chart.mean)});
    return table;
}

} // namespace tallyroom
