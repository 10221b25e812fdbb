// Copying the rows of one table.
#pragma once

#include "host/copy/CopySource.h"
#include "host/copy/RowDigest.h"

namespace tallyroom::host {

// Called now and then with the rows that have been read.
using RowProgress = std::function<void(qint64 rows)>;

// Appends all rows to the table of the same name in `target`, which has the same columns, and sums
// up what was to be written. Bytes become a text of their digits, for no column keeps them. Raises
// 3421 for a value that its column cannot hold, and what reading and writing raise, all with the
// table's name.
TableSum copyTable(CopySource& source, Database& target, const TableFormat& format,
                   const RowProgress& progress);

// Sums up what is there. Columns that `format` does not name are left out.
TableSum sumOfTable(Database& database, const TableFormat& format, const RowProgress& progress);

} // namespace tallyroom::host
