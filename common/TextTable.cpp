#include "common/TextTable.h"

#include <algorithm>

namespace tallyroom {

namespace {

// A tab or a line break inside a text would begin a new cell or row, and a quote would hide those
// that follow.
QString quoted(const QString& text) {
    QString cell = text.simplified();
    if (cell.contains(QLatin1Char('"')))
        cell = QLatin1Char('"') + cell.replace(QLatin1Char('"'), QLatin1String("\"\"")) +
               QLatin1Char('"');
    return cell;
}

} // namespace

bool TextTable::isBlank() const {
    return std::ranges::all_of(
        rows, [](const QStringList& row) { return row.join(QString()).isEmpty(); });
}

QString tabSeparated(const TextTable& table) {
    QStringList headings;
    for (const TextTable::Column& column : table.columns)
        headings.append(quoted(column.heading));
    QString lines = headings.join(QLatin1Char('\t')) + QLatin1Char('\n');
    for (const QStringList& row : table.rows) {
        QStringList cells;
        for (qsizetype column = 0; column < headings.size(); ++column)
            cells.append(quoted(row.value(column)));
        lines += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return lines;
}

} // namespace tallyroom
