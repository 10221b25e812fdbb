#include "store/sql/BoundNodes.h"

#include <unordered_set>

namespace tallyroom::sql {

namespace {

// Each node once: aliases may share them many times over.
class Search {
public:
    explicit Search(const std::function<bool(const BoundPtr&)>& isWanted) : m_isWanted(isWanted) {}

    void look(const BoundSelect& query) {
        changed(query, [this](const BoundPtr& node) {
            look(node);
            return node;
        });
    }
    bool hasFound() const { return m_hasFound; }

private:
    void look(const BoundPtr& node) {
        if (m_hasFound || !m_known.insert(node.get()).second)
            return;
        m_hasFound = m_isWanted(node);
        for (const BoundPtr& operand : node->operands)
            look(operand);
        if (node->select)
            look(*node->select);
    }

    const std::function<bool(const BoundPtr&)>& m_isWanted;
    std::unordered_set<const BoundNode*> m_known;
    bool m_hasFound = false;
};

} // namespace

bool anyNode(const BoundSelect& query, const std::function<bool(const BoundPtr&)>& isWanted) {
    Search search(isWanted);
    search.look(query);
    return search.hasFound();
}

BoundSelect changed(BoundSelect query, const std::function<BoundPtr(const BoundPtr&)>& change) {
    if (query.source && query.source->rows)
        query.source->rows = std::make_shared<BoundSelect>(changed(*query.source->rows, change));
    for (BoundColumn& column : query.columns)
        column.value = change(column.value);
    for (BoundPtr& group : query.groupBy)
        group = change(group);
    for (BoundOrder& order : query.orderBy)
        order.value = change(order.value);
    for (BoundPtr* condition : {&query.where, &query.having}) {
        if (*condition)
            *condition = change(*condition);
    }
    return query;
}

} // namespace tallyroom::sql
