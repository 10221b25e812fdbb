// The scratch table tlyrTemp as the board fills it.
#pragma once

#include "board/BoardRows.h"
#include "store/Schema.h"

#include <QStringList>
#include <array>

namespace tallyroom {

class Recordset;

namespace BoardTable {

// tlyrTemp as the board needs it.
const Schema::Table& table();

// The columns that are taken over from the host's employees, the code first: those that tlyrTemp
// has as well, and last the default qualification.
const std::vector<Schema::Column>& employeeColumns();

// The columns that the board fills, and a row's values for them.
QStringList names();
Row values(const BoardRow& row);

// The totals of the current row of the totals query, by position. At 0, where the code is, is none.
using Totals = std::array<double, 7>;
Totals totals(const Recordset& row);

// A sum that a row takes when it is merged with its totals: WorkedOT, AcceptedOT, DeclinedOT,
// TotalOT1, TotalOT2. Positions are those of the totals query.
struct MergedSum {
    int position;
    std::span<const std::size_t> summands;

    double of(const Totals& totals) const;
};
std::span<const MergedSum> mergedSums();

// The current row of the query of employees, each value as tlyrTemp keeps it. Raises 3421 for a
// value of another type, or of more characters, than its column's.
BoardRow employeeRow(const Recordset& employees);

} // namespace BoardTable
} // namespace tallyroom
