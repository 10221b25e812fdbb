// The columns of tlyrTemp that follow from the raw totals.
#pragma once

#include "canvass/CanvassState.h"

namespace tallyroom::DerivedColumns {

// In all of these `multiply` weighs each hour by its rate.

// Statement by statement, in all rows. Raises what the database raises; the statements before the
// failing one stay done.
void computeOneByOne(Database& board, bool multiply);

// In all rows, on the database of CanvassRs, which must be open. They hold nothing else, so nothing
// is done when they were computed alike and nobody has changed the file since. Raises as above.
void compute(CanvassState& state, bool multiply);

// In the rows of one employee, whose code is given as a literal, together with the statement that
// changes their raw totals. A transaction is open. False when nothing is done and the statements
// have to run one by one, these here once that one is committed; raises when a disk that fails has
// undone the transaction.
[[nodiscard]] bool computeFor(Database& board, bool multiply, const QString& change,
                              const QString& employee);

// Whether all rows hold what would be computed, as was noted when they did.
bool areCurrent(const CanvassState& state, bool multiply);
// Before the transaction that has computed them is committed: `board` is its database.
void noteCurrent(CanvassState& state, const std::shared_ptr<Database>& board, bool multiply);

} // namespace tallyroom::DerivedColumns
