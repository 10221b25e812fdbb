// What an engine does for the rows of one table that a recordset goes through and edits.
#pragma once

#include "store/Database.h"
#include "store/sql/Bound.h"

#include <optional>

namespace tallyroom {

// The rows of an updatable query by their keys, which stay the same for as long as a row is there.
// Engine errors are raised as RunErrors.
class KeyedRows {
public:
    virtual ~KeyedRows() = default;

    // All rows, in the query's order.
    virtual std::vector<qint64> keys() = 0;
    // The keys of the table's rows for which the criteria hold, in any order; rows that are not of
    // the query may be among them.
    virtual std::vector<qint64> find(const sql::BoundPtr& criteria) = 0;
    // The query's columns as they are now; nothing when the row has gone.
    virtual std::optional<Row> read(qint64 key) = 0;

    // The values go to the table's columns of these names. What cannot be kept is an error.
    virtual qint64 insert(const QStringList& columns, const Row& values) = 0; // the new row's key
    virtual bool update(qint64 key, const QStringList& columns, const Row& values) = 0;
    virtual bool remove(qint64 key) = 0; // both: false when the row has gone
};

} // namespace tallyroom
