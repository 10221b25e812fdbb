#include "store/sql/Typing.h"

#include <algorithm>

namespace tallyroom::sql {

namespace {

ValueType literalType(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Boolean:
        return ValueType::Boolean;
    case Variant::Type::Long:
        return ValueType::Long;
    case Variant::Type::Double:
        return ValueType::Double;
    case Variant::Type::Date:
        return ValueType::Date;
    case Variant::Type::Text:
        return ValueType::Text;
    default:
        return ValueType::Null;
    }
}

bool isNumeric(const BoundPtr& node) {
    return node->type == ValueType::Long || node->type == ValueType::Double ||
           node->type == ValueType::Boolean;
}

// A date is the number of its day.
bool isDayCount(const BoundPtr& node) {
    return isNumeric(node) || node->type == ValueType::Date;
}

bool isCondition(const BoundNode& node) {
    return node.kind == BoundKind::InList || node.kind == BoundKind::InSelect ||
           (node.kind == BoundKind::Apply && node.operation <= Operation::NumberAsCondition);
}

// An engine wants to know the type of a Null that is computed with. Texts are what it takes one
// for.
BoundPtr typedNull(BoundPtr value, ValueType type) {
    const bool isLiteral = value->kind == BoundKind::Literal;
    if (type == ValueType::Text || (!isLiteral && value->kind != BoundKind::Subquery))
        return value;
    auto node = std::make_shared<BoundNode>(*value);
    node->type = type;
    if (isLiteral)
        return node;
    auto select = std::make_shared<BoundSelect>(*value->select);
    select->columns.front().value = typedNull(select->columns.front().value, type);
    node->select = std::move(select);
    return node;
}

BoundPtr toNumber(BoundPtr value) {
    switch (value->type) {
    case ValueType::Text:
        return applyNode(Operation::TextToNumber, ValueType::Double, {std::move(value)});
    case ValueType::Date:
        return applyNode(Operation::DateToSerial, ValueType::Double, {std::move(value)});
    case ValueType::Boolean:
        return asValue(std::move(value));
    case ValueType::Null:
        return typedNull(std::move(value), ValueType::Double);
    default:
        return value;
    }
}

BoundPtr toText(BoundPtr value) {
    const Operation operation =
        value->type == ValueType::Date ? Operation::DateToText : Operation::NumberToText;
    return applyNode(operation, ValueType::Text, {asValue(std::move(value))});
}

BoundPtr toLong(BoundPtr value) {
    BoundPtr number = toNumber(std::move(value));
    if (number->type == ValueType::Double)
        return applyNode(Operation::RoundToLong, ValueType::Long, {std::move(number)});
    return number;
}

BoundPtr toDate(BoundPtr value) {
    const Operation operation =
        value->type == ValueType::Text ? Operation::TextToDate : Operation::SerialToDate;
    return applyNode(operation, ValueType::Date, {std::move(value)});
}

ValueType arithmeticType(Operation operation, const BoundPtr& left, const BoundPtr& right) {
    const auto whole = [](const BoundPtr& node) {
        return node->type == ValueType::Long || node->type == ValueType::Boolean;
    };
    if (operation == Operation::Modulo)
        return ValueType::Long;
    const bool bothWhole = whole(left) && whole(right) && operation != Operation::Divide;
    return bothWhole ? ValueType::Long : ValueType::Double;
}

} // namespace

std::shared_ptr<BoundNode> makeNode(BoundKind kind, ValueType type, std::vector<BoundPtr> operands,
                                    int width) {
    auto node = std::make_shared<BoundNode>();
    node->kind = kind;
    node->type = type;
    node->width = width;
    node->operands = std::move(operands);
    node->aggregate = std::ranges::any_of(
        node->operands, [](const BoundPtr& operand) { return operand->aggregate; });
    node->constant = kind == BoundKind::Literal ||
                     (kind == BoundKind::Apply && !node->operands.empty() &&
                      std::ranges::all_of(node->operands, [](const BoundPtr& operand) {
                          return operand->constant;
                      }));
    return node;
}

BoundPtr literalNode(const Variant& value) {
    const ValueType type = literalType(value);
    const qsizetype width = type == ValueType::Text ? value.toText().size() : 0;
    auto node = makeNode(BoundKind::Literal, type, {}, static_cast<int>(width));
    node->value = value;
    return node;
}

BoundPtr columnNode(const QString& source, const CatalogColumn& column) {
    auto node = makeNode(BoundKind::Column, column.type, {}, column.width);
    node->source = source;
    node->column = column.name;
    return node;
}

BoundPtr applyNode(Operation operation, ValueType type, std::vector<BoundPtr> operands, int width) {
    auto node = makeNode(BoundKind::Apply, type, std::move(operands), width);
    node->operation = operation;
    node->aggregate = node->aggregate || isAggregate(*node);
    node->constant = node->constant && !node->aggregate;
    return node;
}

bool isNullLiteral(const BoundPtr& node) {
    return node->type == ValueType::Null;
}

BoundPtr convert(BoundPtr value, ValueType type) {
    if (isNullLiteral(value))
        return typedNull(std::move(value), type);
    if (value->type == type || type == ValueType::Null)
        return asValue(std::move(value));
    switch (type) {
    case ValueType::Boolean:
        return asValue(condition(std::move(value)));
    case ValueType::Long:
        return toLong(std::move(value));
    case ValueType::Double:
        return toNumber(std::move(value));
    case ValueType::Date:
        return toDate(value->type == ValueType::Text ? std::move(value)
                                                     : toNumber(std::move(value)));
    default:
        return toText(std::move(value));
    }
}

BoundPtr convertForColumn(BoundPtr value, const CatalogColumn& column) {
    BoundPtr converted = convert(std::move(value), column.type);
    const bool fits = column.width == 0 || isNullLiteral(converted) ||
                      (converted->width > 0 && converted->width <= column.width);
    if (column.type != ValueType::Text || fits)
        return converted;
    return applyNode(Operation::FitText, ValueType::Text,
                     {std::move(converted), literalNode(Variant(column.width))}, column.width);
}

CatalogColumn commonFormat(const BoundPtr& left, const BoundPtr& right) {
    if (isNullLiteral(left))
        return {{}, right->type, right->width};
    if (isNullLiteral(right))
        return {{}, left->type, left->width};
    const bool anyLength = left->width == 0 || right->width == 0;
    if (left->type == right->type)
        return {{}, left->type, anyLength ? 0 : std::max(left->width, right->width)};
    if (isNumeric(left) && isNumeric(right))
        return {{}, arithmeticType(Operation::Add, left, right), 0};
    if (isDayCount(left) && isDayCount(right))
        return {{}, ValueType::Double, 0};
    return {{}, ValueType::Text, 0};
}

BoundPtr condition(BoundPtr value) {
    if (isCondition(*value) || isNullLiteral(value))
        return value;
    return applyNode(Operation::NumberAsCondition, ValueType::Boolean,
                     {toNumber(std::move(value))});
}

BoundPtr asValue(BoundPtr node) {
    if (!isCondition(*node))
        return node;
    return applyNode(Operation::ConditionAsNumber, ValueType::Boolean, {std::move(node)});
}

BoundPtr logical(Operation operation, std::vector<BoundPtr> operands) {
    for (BoundPtr& operand : operands)
        operand = condition(std::move(operand));
    return applyNode(operation, ValueType::Boolean, std::move(operands));
}

BoundPtr negative(BoundPtr value) {
    BoundPtr number = toNumber(std::move(value));
    const ValueType type = number->type == ValueType::Double ? ValueType::Double : ValueType::Long;
    return applyNode(Operation::Negate, type, {std::move(number)});
}

BoundPtr oneOfValues(Operation operation, BoundPtr value) {
    if (isNullLiteral(value))
        value = toNumber(std::move(value));
    const ValueType type = value->type;
    const int width = value->width;
    if (type == ValueType::Text)
        operation = operation == Operation::Minimum ? Operation::FirstText : Operation::LastText;
    return applyNode(operation, type, {std::move(value)}, width);
}

BoundPtr arithmetic(Operation operation, BoundPtr left, BoundPtr right) {
    if (operation == Operation::Add && left->type == ValueType::Text &&
        right->type == ValueType::Text)
        return applyNode(Operation::Join, ValueType::Text, {std::move(left), std::move(right)});
    const bool leftDate = left->type == ValueType::Date;
    const bool rightDate = right->type == ValueType::Date;
    const bool givesDate = (operation == Operation::Add && (leftDate || rightDate)) ||
                           (operation == Operation::Subtract && leftDate && !rightDate);
    BoundPtr from = toNumber(std::move(left));
    BoundPtr to = toNumber(std::move(right));
    const ValueType type = arithmeticType(operation, from, to);
    BoundPtr result = applyNode(operation, type, {std::move(from), std::move(to)});
    return givesDate ? convert(std::move(result), ValueType::Date) : result;
}

bool isAggregate(const BoundNode& node) {
    return node.kind == BoundKind::Apply && node.operation >= Operation::Sum &&
           node.operation <= Operation::Average;
}

bool isText(const BoundPtr& node) {
    return node->type == ValueType::Text;
}

bool sameNode(const BoundPtr& left, const BoundPtr& right) {
    if (left == right)
        return true;
    if (left->kind != right->kind || left->operands.size() != right->operands.size() ||
        left->select != right->select || left->texts != right->texts)
        return false;
    const bool sameSelf = left->operation == right->operation && left->source == right->source &&
                          left->column == right->column &&
                          (left->kind != BoundKind::Literal || left->value.sameValue(right->value));
    return sameSelf && std::equal(left->operands.begin(), left->operands.end(),
                                  right->operands.begin(), sameNode);
}

} // namespace tallyroom::sql
