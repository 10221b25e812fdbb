#include "host/copy/CopiedTables.h"

#include "host/copy/SchemaSearch.h"

namespace tallyroom::host {

namespace {

QString typeName(const TableFormat::Column& column) {
    using enum Schema::ColumnType;
    switch (column.type) {
    case Text:
        return QStringLiteral("Text(%1)").arg(column.width);
    case Memo:
        return QStringLiteral("Memo");
    case Long:
    case Counter:
        return QStringLiteral("Long");
    case Double:
        return QStringLiteral("Double");
    case Date:
        return QStringLiteral("Date");
    case Boolean:
        return QStringLiteral("Boolean");
    }
    return {};
}

} // namespace

const char16_t* CopiedTables::kept(const QString& name) {
    return m_names.emplace_back(name.toStdU16String()).c_str();
}

void CopiedTables::add(const Schema::File& file, const std::vector<TableFormat>& found) {
    std::vector<Schema::Table>& tables =
        m_tables.emplace_back(file.tables.begin(), file.tables.end());
    for (const TableFormat& format : found) {
        const Schema::Table* known = findNamed(file.tables, format.name);
        if (!known)
            tables.push_back(made(format));
        else if (!known->scratch)
            tables[static_cast<std::size_t>(known - file.tables.data())] = merged(*known, format);
    }
    m_files.push_back({file.name, tables});
}

// Columns that the source lacks are there without values.
Schema::Table CopiedTables::merged(const Schema::Table& known, const TableFormat& found) {
    std::vector<Schema::Column>& columns = m_columns.emplace_back();
    std::vector<TableFormat::Column> strange;
    for (const TableFormat::Column& column : found.columns) {
        const Schema::Column* own = findNamed(known.columns, column.name);
        columns.push_back({own ? own->name : kept(column.name), column.type, column.width});
        if (!own)
            strange.push_back(column);
    }
    for (const Schema::Column& own : known.columns) {
        if (!findNamed(std::span<const Schema::Column>(columns), QString::fromUtf16(own.name)))
            columns.push_back(own);
    }
    remark(found, strange);
    return {known.name, columns, known.indexes, known.scratch};
}

Schema::Table CopiedTables::made(const TableFormat& found) {
    std::vector<Schema::Column>& columns = m_columns.emplace_back();
    for (const TableFormat::Column& column : found.columns)
        columns.push_back({kept(column.name), column.type, column.width});
    remark(found, found.columns);
    return {kept(found.name), columns, {}};
}

void CopiedTables::remark(const TableFormat& found,
                          const std::vector<TableFormat::Column>& columns) {
    QStringList types;
    for (const TableFormat::Column& column : columns)
        types << column.name + u' ' + typeName(column);
    if (!types.isEmpty())
        m_remarks << QStringLiteral("%1: not known to this program, without indexes, as %2")
                         .arg(found.name, types.join(QStringLiteral(", ")));
}

} // namespace tallyroom::host
