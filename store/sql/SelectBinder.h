// Binds Select statements.
#pragma once

#include "store/sql/ExpressionBinder.h"

#include <unordered_set>

namespace tallyroom::sql {

// One Select, or one subquery with the scope that surrounds it.
class SelectBinder {
public:
    SelectBinder(BindContext& context, Scope* outer);
    ~SelectBinder();
    SelectBinder(const SelectBinder&) = delete;
    SelectBinder& operator=(const SelectBinder&) = delete;

    // Called once. Raises 3078 (no such table), 3103 (circular alias), 3122 (a column that no group
    // has). `sort`, if given, takes the place of the statement's own order.
    BoundSelect bind(const SelectStatement& select, const std::vector<OrderItem>* sort = nullptr);

private:
    class AliasScope;

    void bindSource(const SelectStatement& select);
    void bindColumns(const SelectStatement& select);
    void addAllColumns(const QString& table);
    void bindGroups(const SelectStatement& select);
    void addOrder(const OrderItem& item);
    bool isSelected(const BoundPtr& value) const;
    void leaveOutConstants();
    void checkGroups(const SelectStatement& select) const;
    void orderByGroups();
    void simplifySums();
    BoundPtr sorted(const BoundPtr& value) const;
    bool isPlainCode(const BoundPtr& value) const;
    void groupTexts();
    void sortTexts();
    bool namesOnlyGroups(const BoundSelect& subquery) const;
    bool isGrouped(const BoundPtr& node, std::unordered_set<const BoundNode*>& known) const;

    BindContext& m_context;
    Scope* m_outer;
    BoundSelect m_result;
    QString m_tableName; // by which columns are qualified
    std::unique_ptr<TableScope> m_table;
    std::unique_ptr<AliasScope> m_aliases;
};

} // namespace tallyroom::sql
