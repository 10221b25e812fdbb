#include "store/sql/SelectBinder.h"

#include "common/RunError.h"
#include "store/sql/BoundNodes.h"
#include "store/sql/Comparisons.h"
#include "store/sql/GroupSums.h"
#include "store/sql/TextGroups.h"
#include "store/sql/Typing.h"

#include <algorithm>

namespace tallyroom::sql {

using Aggregates = ExpressionBinder::Aggregates;

// The output names that a select list gives its expressions, usable in the same list in any order.
// An unqualified name that equals one means it, even where the table has such a column.
class SelectBinder::AliasScope final : public Scope {
public:
    AliasScope(BindContext& context, const SelectStatement& select, Scope* columns)
        : m_context(context), m_items(select.items), m_columns(columns),
          m_bound(select.items.size()), m_busy(select.items.size()) {}

    BoundPtr resolve(const QString& qualifier, const QString& name) override {
        if (qualifier.isEmpty()) {
            for (std::size_t i = 0; i < m_items.size(); ++i) {
                if (m_items[i].alias.compare(name, Qt::CaseInsensitive) == 0)
                    return item(i);
            }
        }
        return m_columns ? m_columns->resolve(qualifier, name) : nullptr;
    }

    BoundPtr item(std::size_t position) {
        if (m_bound[position])
            return m_bound[position];
        if (m_busy[position])
            throw RunError::make(ErrorNumber::circularAlias, {m_items[position].alias});
        checkDepth();
        m_busy[position] = true;
        m_bound[position] = ExpressionBinder(m_context, *this, Aggregates::Allowed)
                                .bind(*m_items[position].expression);
        m_busy[position] = false;
        return m_bound[position];
    }

private:
    // Aliases that refer to one another in a long row would nest without end.
    void checkDepth() const {
        constexpr auto maximumDepth = 40;
        if (std::count(m_busy.begin(), m_busy.end(), true) >= maximumDepth)
            throw RunError::make(ErrorNumber::tooComplex);
    }

    BindContext& m_context;
    const std::vector<SelectItem>& m_items;
    Scope* m_columns;
    std::vector<BoundPtr> m_bound;
    std::vector<bool> m_busy;
};

SelectBinder::SelectBinder(BindContext& context, Scope* outer)
    : m_context(context), m_outer(outer) {}

SelectBinder::~SelectBinder() = default;

BoundSelect SelectBinder::bind(const SelectStatement& select, const std::vector<OrderItem>* sort) {
    Q_ASSERT(!m_aliases);
    m_result.distinct = select.distinct;
    bindSource(select);
    bindColumns(select);
    bindGroups(select);
    for (const OrderItem& item : sort ? *sort : select.orderBy)
        addOrder(item);
    checkGroups(select);
    orderByGroups();
    simplifySums();
    groupTexts();
    sortTexts();
    return std::move(m_result);
}

void SelectBinder::bindSource(const SelectStatement& select) {
    Scope* columns = m_outer;
    if (select.from) {
        auto table = m_context.catalog.findTable(select.from->name);
        if (!table)
            throw RunError::make(ErrorNumber::unknownTable, {select.from->name});
        m_result.source = m_context.addSource(std::move(table));
        m_tableName = select.from->alias;
        m_table = std::make_unique<TableScope>(*m_result.source, m_tableName, m_outer);
        columns = m_table.get();
    }
    m_aliases = std::make_unique<AliasScope>(m_context, select, columns);
    if (select.where)
        m_result.where = condition(
            ExpressionBinder(m_context, *columns, Aggregates::Refused).bind(*select.where));
}

void SelectBinder::bindColumns(const SelectStatement& select) {
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        const SelectItem& item = select.items[i];
        if (!item.expression) {
            addAllColumns(item.table);
            continue;
        }
        BoundPtr value = asValue(m_aliases->item(i));
        QString name = item.alias;
        if (name.isEmpty() && value->kind == BoundKind::Column)
            name = value->column;
        else if (name.isEmpty())
            name = QStringLiteral("Expr%1").arg(1000 + i);
        m_result.totals = m_result.totals || value->aggregate;
        m_result.columns.push_back({std::move(name), std::move(value)});
    }
}

void SelectBinder::addAllColumns(const QString& table) {
    if (!m_table)
        throw RunError::make(ErrorNumber::syntaxInSelect);
    if (!table.isEmpty() && table.compare(m_tableName, Qt::CaseInsensitive) != 0)
        throw RunError::make(ErrorNumber::unknownTable, {table});
    const std::vector<CatalogColumn>& columns = m_result.source->table->columns;
    for (std::size_t i = 0; i < columns.size(); ++i)
        m_result.columns.push_back({columns[i].name, m_table->column(i)});
}

void SelectBinder::bindGroups(const SelectStatement& select) {
    for (const ExpressionPtr& group : select.groupBy)
        m_result.groupBy.push_back(
            asValue(ExpressionBinder(m_context, *m_table, Aggregates::Refused).bind(*group)));
    m_result.totals = m_result.totals || !m_result.groupBy.empty();
    if (select.having) {
        ExpressionBinder binder(m_context, *m_aliases, Aggregates::Allowed);
        m_result.having = condition(binder.bind(*select.having));
        m_result.totals = true;
    }
    leaveOutConstants();
}

// To an engine a constant may be a column's position. All rows are one group, but no rows are none.
void SelectBinder::leaveOutConstants() {
    if (std::erase_if(m_result.groupBy, [](const BoundPtr& group) { return group->constant; }) ==
            0 ||
        !m_result.groupBy.empty())
        return;
    BoundPtr isAny =
        compare(Operation::Greater, applyNode(Operation::CountAll, ValueType::Long, {}),
                literalNode(Variant(0)));
    m_result.having = m_result.having ? logical(Operation::And, {m_result.having, isAny}) : isAny;
}

// A whole number stands for the column at that position.
void SelectBinder::addOrder(const OrderItem& item) {
    BoundPtr value = asValue(
        ExpressionBinder(m_context, *m_aliases, Aggregates::Allowed).bind(*item.expression));
    if (value->kind == BoundKind::Literal && value->type == ValueType::Long) {
        const int position = value->value.toLong();
        if (position < 1 || position > static_cast<int>(m_result.columns.size()))
            throw RunError::make(ErrorNumber::syntaxInOrderBy);
        value = m_result.columns[static_cast<std::size_t>(position) - 1].value;
    }
    if (value->constant)
        return; // to an engine it may be a position
    if (m_result.distinct && !isSelected(value))
        throw RunError::make(ErrorNumber::orderBesideDistinct, {value->column});
    m_result.orderBy.push_back({std::move(value), item.descending});
}

bool SelectBinder::isSelected(const BoundPtr& value) const {
    return std::ranges::any_of(
        m_result.columns, [&](const BoundColumn& column) { return sameNode(column.value, value); });
}

void SelectBinder::checkGroups(const SelectStatement& select) const {
    if (!m_result.totals)
        return;
    std::unordered_set<const BoundNode*> known;
    for (const BoundColumn& column : m_result.columns) {
        if (!isGrouped(column.value, known))
            throw RunError::make(ErrorNumber::notInGroup, {column.name});
    }
    for (const BoundOrder& order : m_result.orderBy) {
        if (!isGrouped(order.value, known))
            throw RunError::make(ErrorNumber::notInGroup, {order.value->column});
    }
    if (m_result.having && !isGrouped(m_result.having, known))
        throw RunError::make(ErrorNumber::notInGroup, {select.from->name});
}

// The desktop engine sorts to find the groups.
void SelectBinder::orderByGroups() {
    if (!m_result.orderBy.empty())
        return;
    for (const BoundPtr& group : m_result.groupBy)
        m_result.orderBy.push_back({group, false});
}

void SelectBinder::simplifySums() {
    if (m_result.groupBy.empty())
        return;
    GroupSums sums;
    for (BoundColumn& column : m_result.columns)
        column.value = sums.simplified(column.value);
    for (BoundOrder& order : m_result.orderBy)
        order.value = sums.simplified(order.value);
    m_result.having = sums.simplified(m_result.having);
}

// Where an index has the order that people want, it may serve.
BoundPtr SelectBinder::sorted(const BoundPtr& value) const {
    return isPlainCode(value) ? caseBlind(value) : collated(value);
}

// Of groups that are joined, the condition stands where they are made.
bool SelectBinder::isPlainCode(const BoundPtr& value) const {
    if (!m_result.source || !m_result.source->rows)
        return limitsToPlainCodes(m_result.where, value);
    const BoundSelect& groups = *m_result.source->rows;
    return std::ranges::any_of(groups.columns, [&](const BoundColumn& column) {
        return value->kind == BoundKind::Column && value->column == column.name &&
               limitsToPlainCodes(groups.where, column.value);
    });
}

void SelectBinder::groupTexts() {
    if (TextGroups::suit(m_result, m_context.catalog))
        m_result = TextGroups(m_context.newAlias()).joined(std::move(m_result));
    else
        spellGroups(m_result);
    for (BoundPtr& group : m_result.groupBy)
        group = sorted(group);
}

// What is compared in sorting and leaving out doubles.
void SelectBinder::sortTexts() {
    for (BoundOrder& order : m_result.orderBy)
        order.value = sorted(order.value);
    if (!m_result.distinct)
        return;
    for (BoundColumn& column : m_result.columns)
        column.value = collated(std::move(column.value));
}

// A subquery over the groups sees of the rows no more than what they are grouped by, each column by
// itself.
bool SelectBinder::namesOnlyGroups(const BoundSelect& subquery) const {
    return !anyNode(subquery, [this](const BoundPtr& node) {
        return node->kind == BoundKind::Column && m_result.source &&
               node->source == m_result.source->alias &&
               std::ranges::none_of(m_result.groupBy,
                                    [&](const BoundPtr& group) { return sameNode(group, node); });
    });
}

// True when the value is the same for all rows of a group.
bool SelectBinder::isGrouped(const BoundPtr& node,
                             std::unordered_set<const BoundNode*>& known) const {
    if (!known.insert(node.get()).second)
        return true; // already looked at; a fault there has ended the search
    const auto matches = [&](const BoundPtr& group) { return sameNode(group, node); };
    if (std::any_of(m_result.groupBy.begin(), m_result.groupBy.end(), matches))
        return true;
    if (node->kind == BoundKind::Column)
        return !m_result.source || node->source != m_result.source->alias;
    if (isAggregate(*node))
        return true;
    if (node->select && !namesOnlyGroups(*node->select))
        return false;
    return std::all_of(node->operands.begin(), node->operands.end(),
                       [&](const BoundPtr& operand) { return isGrouped(operand, known); });
}

} // namespace tallyroom::sql
