// What tables a copy has.
#pragma once

#include "store/Database.h"

#include <QStringList>
#include <deque>
#include <string>

namespace tallyroom::host {

// The tables that the program knows, with the columns that its source has besides, and whatever
// else is in the source. Columns keep the types that they are found with.
class CopiedTables {
public:
    // Of a file of the source. Once for each, in any order.
    void add(const Schema::File& file, const std::vector<TableFormat>& found);

    // Valid as long as this lives.
    std::span<const Schema::File> files() const { return m_files; }
    // A line for each table that has what the program does not know, with the types.
    const QStringList& remarks() const { return m_remarks; }

private:
    const char16_t* kept(const QString& name);
    Schema::Table merged(const Schema::Table& known, const TableFormat& found);
    Schema::Table made(const TableFormat& found);
    void remark(const TableFormat& found, const std::vector<TableFormat::Column>& columns);

    std::vector<Schema::File> m_files;
    QStringList m_remarks;
    // What the spans and names in the files point into; it stays where it is.
    std::deque<std::u16string> m_names;
    std::deque<std::vector<Schema::Column>> m_columns;
    std::deque<std::vector<Schema::Table>> m_tables;
};

} // namespace tallyroom::host
