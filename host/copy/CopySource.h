// What a copy is made of: the tables and rows of one file.
#pragma once

#include "store/Database.h"

#include <memory>

namespace tallyroom::host {

// The file stays as it is while this lives.
class CopySource {
public:
    virtual ~CopySource() = default;

    // Those that are copied, with the columns and types that the copy gets.
    virtual const std::vector<TableFormat>& tables() const = 0;

    // Gives all rows of one of them in the order of their entry, some thousands at a time. `take`
    // may throw.
    virtual void readRows(const TableFormat& table, const TakeRows& take) = 0;

    // Called when the rows of all files have been read. Raises when the file has not stayed as it
    // was.
    virtual void requireUnchanged() const {}
};

// A board's scratch table is never copied.
bool isScratch(const Schema::File& file, const QString& table);

} // namespace tallyroom::host
