// A quicker form of sums that count a Null as zero.
#pragma once

#include "store/sql/Bound.h"

#include <unordered_map>

namespace tallyroom::sql {

// Turns Sum(IIf(IsNull(x), 0, x)) into the sum of x with a zero in place of Null. Both add the same
// numbers in the same order, and a group has always a row, so that neither is Null; but the engine
// need not look for a Null in each row. Without groups there may be no row, so this is for
// grouped queries only.
class GroupSums {
public:
    BoundPtr simplified(const BoundPtr& node);

private:
    BoundPtr rewritten(const BoundPtr& node);

    std::unordered_map<BoundPtr, BoundPtr> m_known; // what aliases share stays shared
};

} // namespace tallyroom::sql
