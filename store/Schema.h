// The single list of files, tables, columns and types, from which each engine's tables are made.
#pragma once

#include <span>
#include <string_view>

namespace tallyroom::Schema {

enum class ColumnType {
    Text,    // up to Column::width characters
    Memo,    // text of any length
    Long,    // whole number, 32 bits; minutes and codes of actions
    Double,  // fractions of a day, seniority numbers
    Date,    // date and time of day, to the second
    Boolean, // True is −1
    Counter  // whole number that the engine assigns; the table's key
};

struct Column {
    const char16_t* name;
    ColumnType type;
    int width = 0;
};

// An index over columns of a table, in this order.
struct Index {
    const char16_t* name;
    std::span<const char16_t* const> columns;
    bool unique = false;
    bool ofSites = false; // files do without it
};

struct Table {
    const char16_t* name;
    std::span<const Column> columns;
    std::span<const Index> indexes;
    bool scratch = false; // a board's own while it is at work: on a server, nobody else sees it
};

struct File {
    const char16_t* name; // "aidb01.mdb"
    std::span<const Table> tables;
};

std::span<const File> files();

// By name, spelled as here. Both throw std::logic_error for one that is not there.
const Table& table(std::u16string_view name);
const Column& column(const Table& table, std::u16string_view name);

} // namespace tallyroom::Schema
