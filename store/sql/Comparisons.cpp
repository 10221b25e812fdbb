#include "store/sql/Comparisons.h"

#include "common/RunError.h"
#include "common/TextOrder.h"
#include "store/sql/Typing.h"

#include <algorithm>
#include <optional>

namespace tallyroom::sql {

namespace {

constexpr int fewValues = 4;

// Brings both sides to one type, or refuses.
void matchForComparison(BoundPtr& left, BoundPtr& right) {
    if (left->type == ValueType::Boolean)
        left = convert(std::move(left), ValueType::Boolean);
    if (right->type == ValueType::Boolean)
        right = convert(std::move(right), ValueType::Boolean);
    if (isNullLiteral(left) || isNullLiteral(right)) {
        left = convert(std::move(left), right->type);
        right = convert(std::move(right), left->type);
    }
    if (left->type == right->type || isNullLiteral(left) || isNullLiteral(right))
        return;
    if (left->type == ValueType::Text || right->type == ValueType::Text)
        throw RunError::make(ErrorNumber::criteriaTypeMismatch);
    if (left->type == ValueType::Date)
        right = convert(std::move(right), ValueType::Date);
    else if (right->type == ValueType::Date)
        left = convert(std::move(left), ValueType::Date);
}

// Exchanges two literal bounds that stand the wrong way round, so that the engine need not order
// them. False when what they are is known to the engine alone.
bool orderBounds(BoundPtr& low, BoundPtr& high) {
    if (low->kind != BoundKind::Literal || high->kind != BoundKind::Literal ||
        low->value.isNull() || high->value.isNull() || low->type != high->type ||
        low->type == ValueType::Text)
        return false;
    if (low->value.toDouble() > high->value.toDouble())
        std::swap(low, high);
    return true;
}

// To compare with it, the letters A to Z are all that has a case.
bool foldsAsAscii(const BoundPtr& node) {
    return node->type != ValueType::Text ||
           (node->kind == BoundKind::Literal && TextOrder::isAscii(node->value.toText()));
}

bool isPlainCode(const QString& text) {
    return TextOrder::isAscii(text) &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c.isLetterOrNumber(); });
}

BoundPtr asText(Operation operation, BoundPtr value) {
    if (value->type != ValueType::Text)
        return value;
    const int width = value->width;
    return applyNode(operation, ValueType::Text, {std::move(value)}, width);
}

// Whatever is the same as one of the texts is the same as one of these, to the files' indexes.
// Nothing if there are too many.
std::optional<QStringList> allSpellings(const QStringList& texts) {
    QStringList result;
    for (const QString& text : texts) {
        const QStringList spellings = TextOrder::spellings(text);
        if (spellings.isEmpty())
            return std::nullopt;
        result += spellings;
    }
    return result;
}

// The texts stay one value.
BoundPtr inTexts(BoundPtr left, const QStringList& texts) {
    const bool asAscii = std::all_of(texts.begin(), texts.end(), TextOrder::isAscii);
    const auto spellings = asAscii ? texts : allSpellings(texts);
    auto node = makeNode(BoundKind::InList, ValueType::Boolean,
                         {spellings ? caseBlind(std::move(left)) : collated(std::move(left))});
    node->texts = spellings.value_or(texts);
    return node;
}

bool isColumn(const BoundPtr& node) {
    return node->kind == BoundKind::Column;
}

// Aliases are numbered: a subquery's table comes after the one whose rows it is for.
bool isInner(const QString& source, const QString& other) {
    return source.size() != other.size() ? source.size() > other.size() : source > other;
}

// Written so that an index of the column, or of the inner one of two, serves.
BoundPtr sameText(BoundPtr left, BoundPtr right) {
    if (isColumn(right) && (!isColumn(left) || isInner(right->source, left->source)))
        std::swap(left, right);
    if (isColumn(left) && right->kind == BoundKind::Literal)
        return inTexts(std::move(left), {right->value.toText()});
    const bool twoTables = isColumn(left) && isColumn(right) && left->source != right->source;
    if (!twoTables) {
        left = collated(std::move(left));
        right = collated(std::move(right));
    }
    return applyNode(twoTables ? Operation::SameText : Operation::Equal, ValueType::Boolean,
                     {std::move(left), std::move(right)});
}

} // namespace

BoundPtr compare(Operation operation, BoundPtr left, BoundPtr right) {
    // Only "<>" with Null on its right is a test; every other comparison with Null is unknown.
    if (operation == Operation::NotEqual && isNullLiteral(right) && !isNullLiteral(left))
        return applyNode(Operation::IsNotNull, ValueType::Boolean, {std::move(left)});
    matchForComparison(left, right);
    const bool asAscii = foldsAsAscii(left) || foldsAsAscii(right);
    if (operation == Operation::Equal && !asAscii)
        return sameText(std::move(left), std::move(right));
    const bool folds = operation == Operation::NotEqual && !asAscii;
    left = folds ? collated(std::move(left)) : caseBlind(std::move(left));
    right = folds ? collated(std::move(right)) : caseBlind(std::move(right));
    return applyNode(operation, ValueType::Boolean, {std::move(left), std::move(right)});
}

BoundPtr between(const BoundPtr& value, const BoundPtr& low, const BoundPtr& high) {
    BoundPtr left = value;
    BoundPtr from = low;
    BoundPtr to = high;
    matchForComparison(left, from); // may turn the left side into a date
    matchForComparison(left, to);
    matchForComparison(left, from);
    const bool ordered = orderBounds(from, to);
    return applyNode(
        ordered ? Operation::BetweenOrdered : Operation::Between, ValueType::Boolean,
        {caseBlind(std::move(left)), caseBlind(std::move(from)), caseBlind(std::move(to))});
}

namespace {

// A single value, or a few with spellings of their own.
BoundPtr anyOf(const BoundPtr& value, const std::vector<BoundPtr>& list) {
    BoundPtr result;
    for (const BoundPtr& item : list) {
        BoundPtr equal = compare(Operation::Equal, value, item);
        result = result ? logical(Operation::Or, {std::move(result), std::move(equal)})
                        : std::move(equal);
    }
    return result;
}

// Of one type, so that none is converted otherwise than in a longer list.
bool areLiterals(const std::vector<BoundPtr>& list, ValueType type) {
    return std::all_of(list.begin(), list.end(), [type](const BoundPtr& item) {
        return item->kind == BoundKind::Literal && item->type == type;
    });
}

} // namespace

BoundPtr inList(const BoundPtr& value, std::vector<BoundPtr> list, const QStringList& texts) {
    if (list.empty() && texts.size() > fewValues) {
        BoundPtr left = value;
        BoundPtr anyText = literalNode(Variant(texts.front()));
        matchForComparison(left, anyText);
        return inTexts(std::move(left), texts);
    }
    for (const QString& text : texts)
        list.push_back(literalNode(Variant(text)));
    const bool asAscii = std::all_of(list.begin(), list.end(), foldsAsAscii);
    if (isColumn(value) && static_cast<int>(list.size()) <= fewValues &&
        areLiterals(list, value->type) && (list.size() == 1 || !asAscii))
        return anyOf(value, list);
    BoundPtr left = value;
    for (BoundPtr& item : list)
        matchForComparison(left, item);
    list.insert(list.begin(), std::move(left));
    for (BoundPtr& item : list)
        item = asAscii ? caseBlind(std::move(item)) : collated(std::move(item));
    return makeNode(BoundKind::InList, ValueType::Boolean, std::move(list));
}

BoundPtr inSelect(const BoundPtr& value, std::shared_ptr<const BoundSelect> select) {
    BoundPtr left = value;
    BoundPtr right = select->columns.front().value;
    matchForComparison(left, right);
    auto node = makeNode(BoundKind::InSelect, ValueType::Boolean, {std::move(left)});
    if (right != select->columns.front().value) {
        auto converted = std::make_shared<BoundSelect>(*select);
        converted->columns.front().value = std::move(right);
        select = std::move(converted);
    }
    node->select = std::move(select);
    return node;
}

BoundPtr caseBlind(BoundPtr value) {
    return asText(Operation::CaseBlind, std::move(value));
}

BoundPtr collated(BoundPtr value) {
    return asText(Operation::Collated, std::move(value));
}

bool limitsToPlainCodes(const BoundPtr& condition, const BoundPtr& text) {
    if (!condition || text->type != ValueType::Text)
        return false;
    const auto limits = [&](const BoundPtr& part) { return limitsToPlainCodes(part, text); };
    if (condition->applies(Operation::And))
        return std::any_of(condition->operands.begin(), condition->operands.end(), limits);
    return condition->kind == BoundKind::InList && !condition->texts.isEmpty() &&
           sameNode(condition->operands.front(), caseBlind(text)) &&
           std::all_of(condition->texts.begin(), condition->texts.end(), isPlainCode);
}

} // namespace tallyroom::sql
