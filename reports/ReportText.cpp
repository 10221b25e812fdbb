#include "reports/ReportText.h"

namespace tallyroom {

namespace {

QString block(const QStringList& lines) {
    return lines.isEmpty() ? QString() : QLatin1Char('\n') + lines.join(u'\n') + QLatin1Char('\n');
}

QString tableBlock(const ValueTable& table) {
    const QString caption = table.caption.isEmpty() ? QString() : table.caption + QLatin1Char('\n');
    return QLatin1Char('\n') + caption + aligned(table.texts());
}

} // namespace

QString reportText(const Report& report) {
    QString text = report.title + QLatin1Char('\n');
    for (const QString& detail : report.details)
        text += detail + QLatin1Char('\n');
    text += block(report.words);
    for (const ValueTable& table : report.tables)
        text += tableBlock(table);
    for (const Chart& chart : report.charts) {
        if (chart.kind == Chart::Kind::Line) // bars show what the tables say
            text += tableBlock(pointsOf(chart));
    }
    return text + block(report.notes);
}

} // namespace tallyroom
