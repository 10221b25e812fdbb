#include "store/engine/FileCompletion.h"

#include <algorithm>

namespace tallyroom {

namespace {

bool isCalled(const char16_t* name, const QString& found) {
    return found.compare(QStringView(name), Qt::CaseInsensitive) == 0;
}

void addWidenings(FileCompletion& completion, const Schema::Table& table,
                  const TableFormat& found) {
    for (const Schema::Column& column : table.columns) {
        const auto kept = std::ranges::find_if(found.columns, [&](const TableFormat::Column& each) {
            return isCalled(column.name, each.name);
        });
        if (kept != found.columns.end() && kept->type == Schema::ColumnType::Text &&
            column.type == Schema::ColumnType::Text && kept->width < column.width)
            completion.widenings.push_back({&column, found.name, kept->name, kept->width});
    }
}

} // namespace

FileCompletion completionOf(const Schema::File& file, const std::vector<TableFormat>& found) {
    FileCompletion completion;
    for (const Schema::Table& table : file.tables) {
        if (table.scratch)
            continue;
        const auto known = std::ranges::find_if(
            found, [&](const TableFormat& each) { return isCalled(table.name, each.name); });
        if (known == found.end()) {
            completion.missing.push_back(&table);
            continue;
        }
        completion.present.push_back(&table);
        addWidenings(completion, table, *known);
    }
    return completion;
}

QStringList linesOf(const FileCompletion& completion) {
    QStringList lines;
    for (const Schema::Table* table : completion.missing)
        lines << QStringLiteral("%1: added").arg(QString::fromUtf16(table->name));
    for (const FileCompletion::Widening& widening : completion.widenings)
        lines << QStringLiteral("%1: %2 takes %3 characters")
                     .arg(widening.table, widening.name)
                     .arg(widening.column->width);
    return lines;
}

} // namespace tallyroom
