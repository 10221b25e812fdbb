// Several Update statements as one.
#pragma once

#include "store/sql/Bound.h"

#include <optional>

namespace tallyroom::sql {

// The one statement that leaves in the rows what these leave when they run in turn: where one reads
// a column that an earlier one has set, the value stands in for the column. It touches only rows in
// which something changes. Statements whose condition never holds take no part.
//
// Nothing when that cannot be told: for statements over more than one table or with another
// condition, for tables with triggers or rules, which meet the values in between as well, and for
// columns and operations other than whole numbers' arithmetic, whose values are the same before and
// after they are stored.
std::optional<BoundUpdate> composed(const std::vector<BoundUpdate>& updates);

// What these leave in a row whose columns have just been given these values, which are Literals or
// Parameters: the given columns with the others that the statements set. Nothing when that cannot
// be told, as above, or takes more of the row than was given.
std::optional<std::vector<BoundAssignment>> followed(const std::vector<BoundAssignment>& given,
                                                     const std::vector<BoundUpdate>& updates);

} // namespace tallyroom::sql
