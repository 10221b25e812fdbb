// Groups of texts, some of which are the same but for the case of an accented letter.
#pragma once

#include "store/sql/Bound.h"

#include <unordered_map>

namespace tallyroom::sql {

// A grouped query as one over the groups that the engine makes of texts as they are kept, which
// cost the least: it joins groups whose texts are the same. Of their spellings, it gives the first
// one in the order of the indexes; in files, spellings of ASCII have been one group before, which
// gives its first.
class TextGroups {
public:
    // `alias` is what the statement may call the groups of the indexes.
    explicit TextGroups(QString alias) : m_alias(std::move(alias)) {}

    // For queries that suit: with a group of texts that the engine may not take as one, and without
    // subqueries over the groups.
    BoundSelect joined(BoundSelect query);

    static bool suit(const BoundSelect& query, const Catalog& catalog);

private:
    void addGroups(BoundSelect& query);
    BoundPtr inOrder(const BoundSelect& query, const BoundPtr& node);
    BoundPtr addColumn(BoundPtr value);
    BoundPtr overGroups(const BoundPtr& node);
    BoundPtr rewritten(const BoundPtr& node);
    BoundPtr joinedAggregate(const BoundNode& node);
    BoundPtr joinedAverage(const BoundNode& node);

    QString m_alias;
    std::shared_ptr<BoundSelect> m_inner = std::make_shared<BoundSelect>();
    std::vector<BoundPtr> m_groups;                 // as the query writes them ...
    std::vector<BoundPtr> m_values;                 // ... and what they are over the inner groups
    std::unordered_map<BoundPtr, BoundPtr> m_known; // what aliases share stays shared
};

// Of a query grouped by texts, which are compared in another form than they have: what it reads of
// a group is one of the spellings. Its groups are still as the query writes them.
void spellGroups(BoundSelect& query);

} // namespace tallyroom::sql
