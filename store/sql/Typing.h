// The desktop engine's rules of types: how values convert and what operations give.
#pragma once

#include "store/sql/Bound.h"

namespace tallyroom::sql {

// Nodes of every kind; the caller of the first fills in what its kind has besides operands.
std::shared_ptr<BoundNode> makeNode(BoundKind kind, ValueType type,
                                    std::vector<BoundPtr> operands = {}, int width = 0);
BoundPtr literalNode(const Variant& value);
BoundPtr columnNode(const QString& source, const CatalogColumn& column);
BoundPtr applyNode(Operation operation, ValueType type, std::vector<BoundPtr> operands,
                   int width = 0);

bool isNullLiteral(const BoundPtr& node);

// The value as another type; Null for what does not convert. Adds nothing where it has that type.
BoundPtr convert(BoundPtr value, ValueType type);

// The value as a column of that type and width keeps it.
BoundPtr convertForColumn(BoundPtr value, const CatalogColumn& column);

// Type and width that both values can be brought to, as the branches of an IIf must.
CatalogColumn commonFormat(const BoundPtr& left, const BoundPtr& right);

// What is tested for being true, as the operands of And and Or are: a condition, or any number.
BoundPtr condition(BoundPtr value);
// What is kept, sorted or shown: −1 or 0 for a condition.
BoundPtr asValue(BoundPtr node);
BoundPtr logical(Operation operation, std::vector<BoundPtr> operands);
BoundPtr negative(BoundPtr value);
// The least or the greatest value of a group: Minimum or Maximum.
BoundPtr oneOfValues(Operation operation, BoundPtr value);
BoundPtr arithmetic(Operation operation, BoundPtr left, BoundPtr right);

bool isAggregate(const BoundNode& node);
bool isText(const BoundPtr& node);
bool sameNode(const BoundPtr& left, const BoundPtr& right);

} // namespace tallyroom::sql
