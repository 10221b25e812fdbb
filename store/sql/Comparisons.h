// The desktop engine's rules of comparing: what may be compared, and when two texts are the same.
#pragma once

#include "store/sql/Bound.h"

namespace tallyroom::sql {

// Raise 3464 when a text is compared with a number, a date or a logical value.
BoundPtr compare(Operation operation, BoundPtr left, BoundPtr right);
BoundPtr between(const BoundPtr& value, const BoundPtr& low, const BoundPtr& high);
// The items of the list are its values and its texts.
BoundPtr inList(const BoundPtr& value, std::vector<BoundPtr> list, const QStringList& texts);
BoundPtr inSelect(const BoundPtr& value, std::shared_ptr<const BoundSelect> select);

// A text as the files' indexes compare it, and as people sort it; other values are left alone. To
// both, texts are the same when one of them is of ASCII.
BoundPtr caseBlind(BoundPtr value);
BoundPtr collated(BoundPtr value);

// Whether the condition lets only such texts through as both take in the same order: a list of
// codes that are letters and digits of ASCII alone.
bool limitsToPlainCodes(const BoundPtr& condition, const BoundPtr& text);

} // namespace tallyroom::sql
