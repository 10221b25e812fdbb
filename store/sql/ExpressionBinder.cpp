#include "store/sql/ExpressionBinder.h"

#include "common/RunError.h"
#include "store/sql/Comparisons.h"
#include "store/sql/Functions.h"
#include "store/sql/SelectBinder.h"
#include "store/sql/Typing.h"

namespace tallyroom::sql {

namespace {

// IIf(IsNull(x), y, x), which an engine can do with one look at x.
bool standsInForNull(const std::vector<BoundPtr>& arguments, ValueType type) {
    const BoundNode& condition = *arguments[0];
    return condition.applies(Operation::IsNull) && arguments[2]->type == type &&
           sameNode(condition.operands.front(), arguments[2]);
}

BoundPtr bindChoice(const std::vector<BoundPtr>& arguments) {
    const CatalogColumn format = commonFormat(arguments[1], arguments[2]);
    if (format.type == ValueType::Null && !arguments[0]->aggregate)
        return literalNode(Variant::null());
    const bool number = format.type == ValueType::Long || format.type == ValueType::Double;
    if (number && standsInForNull(arguments, format.type))
        return applyNode(Operation::IfNull, format.type,
                         {arguments[2], convert(arguments[1], format.type)});
    return applyNode(Operation::If, format.type,
                     {condition(arguments[0]), convert(arguments[1], format.type),
                      convert(arguments[2], format.type)},
                     format.width);
}

BoundPtr bindTextFunction(const Function& function, std::vector<BoundPtr> arguments) {
    arguments[0] = convert(arguments[0], ValueType::Text);
    for (std::size_t i = 1; i < arguments.size(); ++i)
        arguments[i] = convert(arguments[i], ValueType::Long);
    return applyNode(function.operation, function.result, std::move(arguments));
}

BoundPtr bindFunction(const Function& function, std::vector<BoundPtr> arguments) {
    switch (function.shape) {
    case FunctionShape::Choice:
        return bindChoice(arguments);
    case FunctionShape::Texts:
        return bindTextFunction(function, std::move(arguments));
    case FunctionShape::Numbers:
        arguments[0] =
            convert(arguments[0],
                    arguments[0]->type == ValueType::Long ? ValueType::Long : ValueType::Double);
        if (function.operation == Operation::Floor && arguments[0]->type != ValueType::Double)
            return arguments[0]; // whole already
        break;
    case FunctionShape::Date:
        arguments[0] = convert(arguments[0], ValueType::Date);
        break;
    case FunctionShape::OneOfValues:
        return oneOfValues(function.operation, asValue(arguments[0]));
    case FunctionShape::Unchanged:
        break;
    }
    const bool typed = function.result != ValueType::Null;
    const ValueType type = typed ? function.result : arguments[0]->type;
    const int width = typed ? 0 : arguments[0]->width;
    return applyNode(function.operation, type, std::move(arguments), width);
}

BoundPtr bothAsText(Operation operation, ValueType result, const std::vector<BoundPtr>& operands) {
    return applyNode(
        operation, result,
        {convert(operands[0], ValueType::Text), convert(operands[1], ValueType::Text)});
}

// Functions without arguments may be called without parentheses.
const Function* findBareFunction(const Name& name) {
    return name.bracketed ? nullptr : findFunction(name.name, 0);
}

} // namespace

BoundSource BindContext::addSource(std::shared_ptr<const CatalogTable> table) {
    return {std::move(table), newAlias()};
}

QString BindContext::newAlias() {
    return QStringLiteral("t%1").arg(++sources);
}

void BindContext::addUnknownName(const QString& name) {
    const QString lower = name.toLower();
    if (!unknownNames.contains(lower))
        unknownNames << lower;
}

ExpressionBinder::ExpressionBinder(BindContext& context, Scope& scope, Aggregates aggregates)
    : m_context(context), m_scope(scope), m_aggregates(aggregates) {}

BoundPtr ExpressionBinder::bind(const Expression& expression) {
    return std::visit([this](const auto& node) { return bindNode(node); }, expression.node);
}

BoundPtr ExpressionBinder::bindNode(const Literal& literal) {
    return literalNode(literal.value);
}

BoundPtr ExpressionBinder::bindNode(const InList& in) {
    BoundPtr left = bind(*in.left);
    return inList(left, bindAll(in.items), in.texts);
}

BoundPtr ExpressionBinder::bindNode(const InSelect& in) {
    BoundPtr left = bind(*in.left);
    return inSelect(left, bindSelect(*in.select));
}

std::vector<BoundPtr> ExpressionBinder::bindAll(const std::vector<ExpressionPtr>& expressions) {
    std::vector<BoundPtr> bound;
    bound.reserve(expressions.size());
    for (const ExpressionPtr& expression : expressions)
        bound.push_back(bind(*expression));
    return bound;
}

BoundPtr ExpressionBinder::bindNode(const Name& name) {
    if (BoundPtr found = m_scope.resolve(name.qualifier, name.name))
        return found;
    if (const Function* function = findBareFunction(name))
        return bindFunction(*function, {});
    m_context.addUnknownName(name.qualifier.isEmpty() ? name.name
                                                      : name.qualifier + u'.' + name.name);
    return literalNode(Variant::null());
}

BoundPtr ExpressionBinder::bindNode(const Apply& apply) {
    const std::vector<BoundPtr> operands = bindAll(apply.operands);
    switch (apply.operation) {
    case Operation::And:
    case Operation::Or:
    case Operation::Not:
        return logical(apply.operation, operands);
    case Operation::Between:
        return between(operands[0], operands[1], operands[2]);
    case Operation::Like:
        return bothAsText(Operation::Like, ValueType::Boolean, operands);
    case Operation::IsNull:
    case Operation::IsNotNull:
        return applyNode(apply.operation, ValueType::Boolean, operands);
    case Operation::Negate:
        return negative(operands[0]);
    case Operation::Concat:
        return bothAsText(Operation::Concat, ValueType::Text, operands);
    case Operation::Add:
    case Operation::Subtract:
    case Operation::Multiply:
    case Operation::Divide:
    case Operation::Modulo:
        return arithmetic(apply.operation, operands[0], operands[1]);
    default:
        return compare(apply.operation, operands[0], operands[1]);
    }
}

BoundPtr ExpressionBinder::bindNode(const Call& call) {
    const Function* function = findFunction(call.function, call.arguments.size());
    if (!function && !isFunction(call.function))
        throw RunError::make(ErrorNumber::unknownFunction, {call.function});
    if (!function)
        throw RunError::make(
            ErrorNumber::syntaxInQuery,
            {QStringLiteral("Wrong number of arguments used with function"), call.function});
    if (!function->aggregate)
        return bindFunction(*function, bindAll(call.arguments));
    if (m_aggregates == Aggregates::Refused)
        throw RunError::make(ErrorNumber::aggregateInWhere, {call.function});
    m_aggregates = Aggregates::Refused; // none inside another
    BoundPtr result = bindFunction(*function, bindAll(call.arguments));
    m_aggregates = Aggregates::Allowed;
    return result;
}

BoundPtr ExpressionBinder::bindNode(const Subquery& subquery) {
    auto select = bindSelect(*subquery.select);
    const BoundNode& value = *select->columns.front().value;
    auto node = makeNode(BoundKind::Subquery, value.type, {}, value.width);
    node->select = std::move(select);
    return node;
}

std::shared_ptr<const BoundSelect> ExpressionBinder::bindSelect(const SelectStatement& select) {
    auto bound = std::make_shared<BoundSelect>(SelectBinder(m_context, &m_scope).bind(select));
    if (bound->columns.size() != 1)
        throw RunError::make(ErrorNumber::subqueryColumns);
    return bound;
}

} // namespace tallyroom::sql
