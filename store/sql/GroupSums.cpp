#include "store/sql/GroupSums.h"

#include "store/sql/Typing.h"

namespace tallyroom::sql {

namespace {

bool isZero(const BoundNode& node) {
    return node.kind == BoundKind::Literal && node.value.sameValue(Variant(0));
}

} // namespace

BoundPtr GroupSums::simplified(const BoundPtr& node) {
    if (!node || !node->aggregate)
        return node;
    const auto [known, isNew] = m_known.try_emplace(node, nullptr);
    if (isNew)
        m_known[node] = rewritten(node);
    return m_known[node];
}

BoundPtr GroupSums::rewritten(const BoundPtr& node) {
    if (node->applies(Operation::Sum)) {
        const BoundNode& summed = *node->operands.front();
        if (!summed.applies(Operation::IfNull) || !isZero(*summed.operands[1]))
            return node;
        return applyNode(
            Operation::IfNull, node->type,
            {applyNode(Operation::Sum, node->type, {summed.operands[0]}), summed.operands[1]});
    }
    auto copy = std::make_shared<BoundNode>(*node);
    for (BoundPtr& operand : copy->operands)
        operand = simplified(operand);
    return copy;
}

} // namespace tallyroom::sql
