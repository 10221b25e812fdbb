#include "reports/Csv.h"

#include "common/Format.h"
#include "reports/ExportText.h"

namespace tallyroom {

namespace {

const QString lineEnd = QStringLiteral("\r\n");

QString harmless(const QString& text) {
    static const QString formulas = QStringLiteral("=+-@\uFF1D\uFF0B\uFF0D\uFF20");
    const QString trimmed = text.trimmed();
    return !trimmed.isEmpty() && formulas.contains(trimmed.front()) ? QLatin1Char('\'') + text
                                                                    : text;
}

QString quoted(QString cell) {
    const bool needsQuotes = cell.contains(QLatin1Char(',')) || cell.contains(QLatin1Char('"')) ||
                             cell.contains(QLatin1Char('\n')) || cell != cell.trimmed();
    if (!needsQuotes)
        return cell;
    cell.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + cell.replace(QLatin1Char('\n'), lineEnd) + QLatin1Char('"');
}

QString textCell(const QString& text) {
    return quoted(harmless(exportedText(text)));
}

// Only a text can be taken for a formula: "-01:30" is an amount.
QString cell(ValueKind kind, const Variant& value) {
    if (value.type() == Variant::Type::Text)
        return textCell(value.toText());
    if (value.isNull() || value.isEmpty())
        return {};
    switch (kind) {
    case ValueKind::Day:
        return formatValue(value, QStringLiteral("yyyy-mm-dd"));
    case ValueKind::Moment:
        return formatValue(value, QStringLiteral("yyyy-mm-dd hh:nn"));
    default:
        return shownValue(kind, value);
    }
}

QString line(const QStringList& cells) {
    return cells.join(QLatin1Char(',')) + lineEnd;
}

QString tableLines(const ValueTable& table) {
    QStringList headings;
    for (const ValueTable::Column& column : table.columns) {
        if (column.hasValues())
            headings << textCell(column.heading.simplified());
    }
    QString lines = line(headings);
    for (const Row& row : table.rows) {
        QStringList cells;
        for (std::size_t at = 0; at < table.columns.size(); ++at) {
            if (table.columns[at].hasValues())
                cells << cell(table.columns[at].kind, row[at]);
        }
        lines += line(cells);
    }
    return lines;
}

QString wordLines(const QStringList& paragraphs) {
    QString lines;
    for (const QString& paragraph : paragraphs)
        lines += line({textCell(paragraph)});
    return lines;
}

} // namespace

QByteArray reportCsv(const Report& report) {
    std::vector<ValueTable> tables = report.tables;
    for (const Chart& chart : report.charts) {
        if (chart.kind == Chart::Kind::Line)
            tables.push_back(pointsOf(chart));
    }
    if (tables.empty())
        return wordLines(QStringList(report.title) + report.words + report.notes).toUtf8();
    QStringList blocks;
    for (const ValueTable& table : tables) {
        const bool isNamed = tables.size() > 1 && !table.caption.isEmpty();
        blocks << (isNamed ? line({textCell(table.caption)}) : QString()) + tableLines(table);
    }
    if (!report.notes.isEmpty())
        blocks << wordLines(report.notes);
    return blocks.join(lineEnd).toUtf8();
}

} // namespace tallyroom
