// The desktop engine's rules of types: what may be compared, how values convert.
#pragma once

#include "store/sql/Bound.h"

namespace tallyroom::sql {

BoundPtr literalNode(const Variant& value);
BoundPtr applyNode(Operation operation, ValueType type, std::vector<BoundPtr> operands,
                   int width = 0);

bool isNullLiteral(const BoundPtr& node);

// The value as another type; Null for what does not convert. Adds nothing where it has that type.
BoundPtr convert(BoundPtr value, ValueType type);

// The value as a column of that type and width keeps it.
BoundPtr convertForColumn(BoundPtr value, const CatalogColumn& column);

// Type and width that both values can be brought to, as the branches of an IIf must.
CatalogColumn commonFormat(const BoundPtr& left, const BoundPtr& right);

// Raise 3464 when a text is compared with a number, a date or a logical value.
BoundPtr compare(Operation operation, BoundPtr left, BoundPtr right);
BoundPtr between(const BoundPtr& value, const BoundPtr& low, const BoundPtr& high);
// The items of the list are its values and its texts.
BoundPtr inList(const BoundPtr& value, std::vector<BoundPtr> list, const QStringList& texts);
BoundPtr inSelect(const BoundPtr& value, std::shared_ptr<const BoundSelect> select);

// A value that is tested for being true, as the operands of And and Or are.
BoundPtr logicalOperand(BoundPtr value);
BoundPtr logical(Operation operation, std::vector<BoundPtr> operands);
BoundPtr negative(BoundPtr value);
BoundPtr arithmetic(Operation operation, BoundPtr left, BoundPtr right);

// A text as it takes part in comparing, grouping and sorting; other values are left alone.
BoundPtr caseBlind(BoundPtr value);

bool isAggregate(Operation operation);
bool sameNode(const BoundPtr& left, const BoundPtr& right);

} // namespace tallyroom::sql
