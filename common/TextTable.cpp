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

std::vector<QStringList> linesOf(const TextTable& table) {
    std::vector<QStringList> lines(1);
    for (const TextTable::Column& column : table.columns)
        lines.front() << column.heading;
    lines.insert(lines.end(), table.rows.begin(), table.rows.end());
    return lines;
}

qsizetype widest(const std::vector<QStringList>& lines, qsizetype column) {
    qsizetype width = 0;
    for (const QStringList& cells : lines)
        width = std::max(width, cells.value(column).size());
    return width;
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

QString aligned(const TextTable& table) {
    std::vector<QStringList> lines = linesOf(table);
    for (std::size_t at = 0; at < table.columns.size(); ++at) {
        const auto column = static_cast<qsizetype>(at);
        const qsizetype width = widest(lines, column);
        const bool isRight = table.columns[at].alignment == CellAlignment::Right;
        for (QStringList& cells : lines) {
            cells.resize(static_cast<qsizetype>(table.columns.size()));
            cells[column] =
                isRight ? cells[column].rightJustified(width) : cells[column].leftJustified(width);
        }
    }
    QString text;
    for (const QStringList& cells : lines) {
        text += cells.join(QStringLiteral("  "));
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        text += QLatin1Char('\n');
    }
    return text;
}

} // namespace tallyroom
