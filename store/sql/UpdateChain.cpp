#include "store/sql/UpdateChain.h"

#include "store/sql/Typing.h"

#include <QHash>
#include <algorithm>

namespace tallyroom::sql {

namespace {

bool neverHolds(const BoundPtr& condition) {
    return condition && condition->kind == BoundKind::Apply &&
           condition->operation == Operation::Equal &&
           std::any_of(condition->operands.begin(), condition->operands.end(), isNullLiteral);
}

bool isNumber(ValueType type) {
    return type == ValueType::Long || type == ValueType::Double;
}

bool isArithmetic(Operation operation) {
    switch (operation) {
    case Operation::Add:
    case Operation::Subtract:
    case Operation::Multiply:
    case Operation::Negate:
    case Operation::IfNull:
    case Operation::RoundToLong:
        return true;
    default:
        return false;
    }
}

bool isReckoned(const BoundPtr& node) {
    const bool known = node->kind == BoundKind::Apply
                           ? isArithmetic(node->operation)
                           : node->kind == BoundKind::Column || node->kind == BoundKind::Literal ||
                                 node->kind == BoundKind::Parameter;
    return known && isNumber(node->type) &&
           std::all_of(node->operands.begin(), node->operands.end(), isReckoned);
}

bool isWholeOne(const BoundPtr& node) {
    return node->kind == BoundKind::Literal && node->type == ValueType::Long &&
           node->value.toLong() == 1;
}

bool isNeverNull(const BoundPtr& node) {
    if (node->kind == BoundKind::Literal)
        return !isNullLiteral(node);
    if (node->kind != BoundKind::Apply)
        return false;
    if (node->operation == Operation::IfNull)
        return isNeverNull(node->operands[1]);
    return std::all_of(node->operands.begin(), node->operands.end(), isNeverNull);
}

// Without what does nothing: the values that stand in for columns leave a lot of it.
BoundPtr simplified(BoundPtr node) {
    if (node->kind != BoundKind::Apply)
        return node;
    const bool once = node->operation == Operation::Multiply && isWholeOne(node->operands[1]);
    if (once && node->operands[0]->kind != BoundKind::Column) // which may hold a text
        return node->operands[0];
    if (node->operation == Operation::IfNull && isNeverNull(node->operands[0]))
        return node->operands[0];
    return node;
}

class Chain {
public:
    explicit Chain(BoundSource target) { m_result.target = std::move(target); }

    // Before any update: the values that the row has been given.
    void give(const std::vector<BoundAssignment>& given) {
        for (const BoundAssignment& assignment : given) {
            m_values[assignment.column] = assignment.value;
            note(assignment.column);
        }
    }

    bool add(const BoundUpdate& update) {
        if (update.where || update.target.table != m_result.target.table ||
            !std::all_of(update.assignments.begin(), update.assignments.end(),
                         [this](const auto& assignment) { return isPlain(assignment); }))
            return false;
        QHash<QString, BoundPtr> values = m_values;
        for (const BoundAssignment& assignment : update.assignments)
            values[assignment.column] = substituted(assignment.value);
        m_values = std::move(values);
        for (const BoundAssignment& assignment : update.assignments)
            note(assignment.column);
        return true;
    }

    std::vector<BoundAssignment> assignments() {
        for (BoundAssignment& assignment : m_result.assignments)
            assignment.value = m_values.value(assignment.column);
        return std::move(m_result.assignments);
    }

    BoundUpdate result() {
        for (BoundAssignment& assignment : m_result.assignments) {
            assignment.value = m_values.value(assignment.column);
            BoundPtr differs = applyNode(Operation::Differs, ValueType::Boolean,
                                         {column(assignment.column), assignment.value});
            m_result.where = m_result.where
                                 ? logical(Operation::Or, {m_result.where, std::move(differs)})
                                 : std::move(differs);
        }
        return std::move(m_result);
    }

private:
    bool isPlain(const BoundAssignment& assignment) const {
        const CatalogTable& table = *m_result.target.table;
        const auto position = static_cast<std::size_t>(table.indexOf(assignment.column));
        return table.columns[position].type == ValueType::Long && isReckoned(assignment.value);
    }

    BoundPtr substituted(const BoundPtr& node) const {
        if (node->kind == BoundKind::Column)
            return m_values.value(node->column, node);
        if (node->operands.empty())
            return node;
        auto copy = std::make_shared<BoundNode>(*node);
        for (BoundPtr& operand : copy->operands)
            operand = substituted(operand);
        return simplified(std::move(copy));
    }

    void note(const QString& name) {
        const auto has = [&](const BoundAssignment& known) { return known.column == name; };
        if (std::none_of(m_result.assignments.begin(), m_result.assignments.end(), has))
            m_result.assignments.push_back({name, nullptr});
    }

    BoundPtr column(const QString& name) const {
        auto node = std::make_shared<BoundNode>();
        node->kind = BoundKind::Column;
        node->type = ValueType::Long;
        node->source = m_result.target.alias;
        node->column = name;
        return node;
    }

    BoundUpdate m_result;
    QHash<QString, BoundPtr> m_values; // of the columns set so far
};

bool addAll(Chain& chain, const std::vector<BoundUpdate>& updates) {
    return std::all_of(updates.begin(), updates.end(), [&chain](const BoundUpdate& update) {
        return neverHolds(update.where) ||
               (update.target.table->keyed && update.target.table->plain && chain.add(update));
    });
}

bool takesColumns(const BoundPtr& node) {
    return node->kind == BoundKind::Column ||
           std::any_of(node->operands.begin(), node->operands.end(), takesColumns);
}

} // namespace

std::optional<BoundUpdate> composed(const std::vector<BoundUpdate>& updates) {
    const auto first = std::find_if(updates.begin(), updates.end(), [](const BoundUpdate& update) {
        return !neverHolds(update.where);
    });
    if (first == updates.end())
        return std::nullopt;
    Chain chain(first->target);
    return addAll(chain, updates) ? std::optional(chain.result()) : std::nullopt;
}

std::optional<std::vector<BoundAssignment>> followed(const std::vector<BoundAssignment>& given,
                                                     const std::vector<BoundUpdate>& updates) {
    if (updates.empty())
        return std::nullopt;
    Chain chain(updates.front().target);
    chain.give(given);
    if (!addAll(chain, updates))
        return std::nullopt;
    std::vector<BoundAssignment> all = chain.assignments();
    const bool told = std::none_of(all.begin(), all.end(), [](const BoundAssignment& assignment) {
        return takesColumns(assignment.value);
    });
    return told ? std::optional(std::move(all)) : std::nullopt;
}

} // namespace tallyroom::sql
