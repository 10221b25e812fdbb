#include "store/sql/TextGroups.h"

#include "store/sql/BoundNodes.h"
#include "store/sql/Comparisons.h"
#include "store/sql/Typing.h"

#include <algorithm>
#include <unordered_set>

namespace tallyroom::sql {

namespace {

// Each node once: aliases may share them many times over.
bool hasSubquery(const BoundPtr& node, std::unordered_set<const BoundNode*>& known) {
    if (!node || !known.insert(node.get()).second)
        return false;
    return node->select ||
           std::any_of(node->operands.begin(), node->operands.end(),
                       [&](const BoundPtr& operand) { return hasSubquery(operand, known); });
}

BoundPtr asIndexed(const BoundPtr& text) {
    return applyNode(Operation::AsIndexed, text->type, {text}, text->width);
}

// Puts what is read for what is grouped, outside aggregates. What aliases share stays shared.
class Speller {
public:
    explicit Speller(const std::vector<BoundPtr>& groups) : m_groups(groups) {}

    BoundPtr spelt(const BoundPtr& node) {
        const auto [known, isNew] = m_known.emplace(node, nullptr);
        if (isNew)
            m_known.at(node) = rewritten(node);
        return m_known.at(node);
    }

    bool isGroup(const BoundPtr& node) const {
        return std::ranges::any_of(m_groups,
                                   [&](const BoundPtr& group) { return sameNode(group, node); });
    }

private:
    BoundPtr rewritten(const BoundPtr& node) {
        if (isGroup(node))
            return isText(node) ? applyNode(Operation::AnySpelling, node->type, {node}, node->width)
                                : node;
        if (isAggregate(*node) || (node->operands.empty() && !node->select))
            return node;
        auto copy = std::make_shared<BoundNode>(*node);
        for (BoundPtr& operand : copy->operands)
            operand = spelt(operand);
        if (node->select)
            copy->select = std::make_shared<BoundSelect>(
                changed(*node->select, [this](const BoundPtr& part) { return spelt(part); }));
        return copy;
    }

    const std::vector<BoundPtr>& m_groups;
    std::unordered_map<BoundPtr, BoundPtr> m_known;
};

} // namespace

bool TextGroups::suit(const BoundSelect& query, const Catalog& catalog) {
    std::unordered_set<const BoundNode*> known;
    const auto isJoined = [&](const BoundPtr& group) {
        return isText(group) &&
               !(catalog.keepsTextsCaseBlind() && limitsToPlainCodes(query.where, group));
    };
    return std::any_of(query.groupBy.begin(), query.groupBy.end(), isJoined) &&
           !hasSubquery(query.having, known) &&
           std::none_of(query.columns.begin(), query.columns.end(),
                        [&](const auto& column) { return hasSubquery(column.value, known); }) &&
           std::none_of(query.orderBy.begin(), query.orderBy.end(),
                        [&](const auto& order) { return hasSubquery(order.value, known); });
}

BoundSelect TextGroups::joined(BoundSelect query) {
    m_inner->totals = true;
    m_inner->source = std::move(query.source);
    m_inner->where = std::move(query.where);
    addGroups(query);
    for (BoundColumn& column : query.columns)
        column.value = overGroups(column.value);
    for (BoundOrder& order : query.orderBy)
        order.value = inOrder(query, order.value);
    if (query.having)
        query.having = overGroups(query.having);
    query.source = BoundSource{nullptr, m_alias, m_inner};
    return query;
}

void TextGroups::addGroups(BoundSelect& query) {
    for (BoundPtr& group : query.groupBy) {
        m_groups.push_back(group);
        m_inner->groupBy.push_back(isText(group) ? asIndexed(group) : group);
        group = addColumn(group);
        m_values.push_back(
            isText(group) ? applyNode(Operation::FirstSpelling, group->type, {group}, group->width)
                          : group);
    }
}

// The groups themselves, whichever spelling comes out: they are sorted already.
BoundPtr TextGroups::inOrder(const BoundSelect& query, const BoundPtr& node) {
    const auto same = [&](const BoundPtr& group) { return sameNode(group, node); };
    const auto found = std::find_if(m_groups.begin(), m_groups.end(), same);
    return found == m_groups.end()
               ? overGroups(node)
               : query.groupBy[static_cast<std::size_t>(found - m_groups.begin())];
}

BoundPtr TextGroups::addColumn(BoundPtr value) {
    const QString name = QStringLiteral("c%1").arg(m_inner->columns.size());
    BoundPtr column = columnNode(m_alias, {name, value->type, value->width});
    m_inner->columns.push_back({name, std::move(value)});
    return column;
}

BoundPtr TextGroups::overGroups(const BoundPtr& node) {
    const auto [known, isNew] = m_known.emplace(node, nullptr);
    if (isNew)
        m_known[node] = rewritten(node);
    return m_known[node];
}

BoundPtr TextGroups::rewritten(const BoundPtr& node) {
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        if (sameNode(m_groups[i], node))
            return m_values[i];
    }
    if (isAggregate(*node))
        return joinedAggregate(*node);
    if (node->operands.empty())
        return node;
    auto copy = std::make_shared<BoundNode>(*node);
    copy->aggregate = false;
    for (BoundPtr& operand : copy->operands) {
        operand = overGroups(operand);
        copy->aggregate = copy->aggregate || operand->aggregate;
    }
    return copy;
}

BoundPtr TextGroups::joinedAggregate(const BoundNode& node) {
    if (node.operation == Operation::Average)
        return joinedAverage(node);
    BoundPtr column = addColumn(applyNode(node.operation, node.type, node.operands, node.width));
    if (node.operation == Operation::Minimum || node.operation == Operation::FirstText)
        return oneOfValues(Operation::Minimum, std::move(column));
    if (node.operation == Operation::Maximum || node.operation == Operation::LastText)
        return oneOfValues(Operation::Maximum, std::move(column));
    return applyNode(Operation::Sum, node.type, {std::move(column)});
}

BoundPtr TextGroups::joinedAverage(const BoundNode& node) {
    const auto total = [&](Operation operation, ValueType type) {
        return applyNode(Operation::Sum, type,
                         {addColumn(applyNode(operation, type, node.operands))});
    };
    return applyNode(
        Operation::Divide, node.type,
        {total(Operation::Sum, ValueType::Double), total(Operation::Count, ValueType::Long)});
}

void spellGroups(BoundSelect& query) {
    if (std::ranges::none_of(query.groupBy, isText))
        return;
    Speller speller(query.groupBy);
    for (BoundColumn& column : query.columns)
        column.value = speller.spelt(column.value);
    for (BoundOrder& order : query.orderBy) {
        if (!speller.isGroup(order.value))
            order.value = speller.spelt(order.value);
    }
    if (query.having)
        query.having = speller.spelt(query.having);
}

} // namespace tallyroom::sql
