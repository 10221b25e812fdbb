#include "store/sql/StatementBinder.h"

#include "common/RunError.h"
#include "store/sql/SelectBinder.h"
#include "store/sql/Typing.h"

namespace tallyroom::sql {

using Aggregates = ExpressionBinder::Aggregates;

namespace {

void requireNoUnknownNames(const BindContext& context) {
    if (!context.unknownNames.isEmpty())
        throw RunError::make(ErrorNumber::tooFewParameters,
                             {QString::number(context.unknownNames.size())});
}

BoundSource findTarget(BindContext& context, const QString& table, int errorNumber) {
    auto found = context.catalog.findTable(table);
    if (!found)
        throw RunError::make(errorNumber, {table});
    return context.addSource(std::move(found));
}

BoundPtr bindWhere(BindContext& context, Scope& scope, const ExpressionPtr& where) {
    if (!where)
        return nullptr;
    return condition(ExpressionBinder(context, scope, Aggregates::Refused).bind(*where));
}

const CatalogColumn& requireInsertColumn(const CatalogTable& table, const QString& name) {
    const int position = table.indexOf(name);
    if (position < 0)
        throw RunError::make(ErrorNumber::unknownInsertField, {name});
    return table.columns[static_cast<std::size_t>(position)];
}

void addInsertColumn(BoundInsert& insert, const QString& name) {
    const QString column = requireInsertColumn(*insert.target.table, name).name;
    if (insert.columns.contains(column))
        throw RunError::make(ErrorNumber::duplicateOutput, {column});
    insert.columns << column;
}

BoundPtr forColumn(const BoundInsert& insert, std::size_t position, const BoundPtr& value) {
    const QString& column = insert.columns.at(static_cast<qsizetype>(position));
    return convertForColumn(value, requireInsertColumn(*insert.target.table, column));
}

void requireValueCount(const BoundInsert& insert, std::size_t count) {
    if (static_cast<std::size_t>(insert.columns.size()) != count)
        throw RunError::make(ErrorNumber::valueCountDiffers);
}

// Without a list of columns, values go to the columns in the table's order ...
void bindRows(BindContext& context, const std::vector<ExpressionPtr>& row, BoundInsert& insert) {
    if (insert.columns.isEmpty()) {
        for (const CatalogColumn& column : insert.target.table->columns)
            insert.columns << column.name;
    }
    requireValueCount(insert, row.size());
    EmptyScope noNames;
    ExpressionBinder binder(context, noNames, Aggregates::Refused);
    std::vector<BoundPtr> values;
    for (const ExpressionPtr& value : row)
        values.push_back(forColumn(insert, values.size(), binder.bind(*value)));
    insert.rows = std::move(values);
}

// ... and selected columns to those of the same name.
void bindRows(BindContext& context, const SelectStatement& select, BoundInsert& insert) {
    BoundSelect rows = SelectBinder(context, nullptr).bind(select);
    if (insert.columns.isEmpty()) {
        for (const BoundColumn& column : rows.columns)
            addInsertColumn(insert, column.name);
    }
    requireValueCount(insert, rows.columns.size());
    for (std::size_t i = 0; i < rows.columns.size(); ++i)
        rows.columns[i].value = forColumn(insert, i, rows.columns[i].value);
    insert.rows = std::move(rows);
}

} // namespace

BoundSelect bindSelect(const Catalog& catalog, const SelectStatement& select,
                       const std::vector<OrderItem>* sort) {
    BindContext context{catalog, {}, 0};
    BoundSelect bound = SelectBinder(context, nullptr).bind(select, sort);
    requireNoUnknownNames(context);
    return bound;
}

BoundDelete bindDelete(const Catalog& catalog, const DeleteStatement& statement) {
    BindContext context{catalog, {}, 0};
    BoundDelete bound{findTarget(context, statement.table, ErrorNumber::unknownTable), nullptr};
    TableScope scope(bound.target, statement.table, nullptr);
    bound.where = bindWhere(context, scope, statement.where);
    requireNoUnknownNames(context);
    return bound;
}

BoundInsert bindInsert(const Catalog& catalog, const InsertStatement& statement) {
    BindContext context{catalog, {}, 0};
    auto target = catalog.findTargetTable(statement.table);
    if (!target)
        throw RunError::make(ErrorNumber::unknownOutputTable, {statement.table});
    BoundInsert bound{context.addSource(std::move(target)), {}, {}};
    for (const QString& column : statement.columns)
        addInsertColumn(bound, column);
    std::visit([&](const auto& rows) { bindRows(context, rows, bound); }, statement.rows);
    requireNoUnknownNames(context);
    return bound;
}

BoundUpdate bindUpdate(const Catalog& catalog, const UpdateStatement& statement) {
    BindContext context{catalog, {}, 0};
    BoundUpdate bound{findTarget(context, statement.table, ErrorNumber::unknownTable), {}, nullptr};
    TableScope scope(bound.target, statement.table, nullptr);
    const CatalogTable& table = *bound.target.table;
    for (const Assignment& assignment : statement.assignments) {
        BoundPtr value =
            ExpressionBinder(context, scope, Aggregates::Refused).bind(*assignment.value);
        const int position = table.indexOf(assignment.column);
        if (position < 0) {
            context.addUnknownName(assignment.column);
            continue;
        }
        const CatalogColumn& column = table.columns[static_cast<std::size_t>(position)];
        bound.assignments.push_back({column.name, convertForColumn(std::move(value), column)});
    }
    bound.where = bindWhere(context, scope, statement.where);
    requireNoUnknownNames(context);
    return bound;
}

BoundDrop bindDrop(const Catalog& catalog, const DropStatement& statement) {
    BindContext context{catalog, {}, 0};
    return {findTarget(context, statement.table, ErrorNumber::noSuchTable)};
}

BoundPtr bindCriteria(const Catalog& catalog, const BoundSelect& select,
                      const Expression& criteria) {
    BindContext context{catalog, {}, 0};
    ResultScope scope(select);
    BoundPtr bound =
        condition(ExpressionBinder(context, scope, Aggregates::Refused).bind(criteria));
    if (!context.unknownNames.isEmpty())
        throw RunError::make(ErrorNumber::unknownField, {context.unknownNames.first()});
    return bound;
}

} // namespace tallyroom::sql
