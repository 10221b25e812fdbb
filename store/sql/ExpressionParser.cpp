#include "store/sql/ExpressionParser.h"

#include "common/DateParser.h"
#include "common/RunError.h"

#include <algorithm>

namespace tallyroom::sql {

using namespace Qt::Literals::StringLiterals;

namespace {

// Real statements nest less than ten deep; the engines underneath give up soon after a hundred.
constexpr int maximumDepth = 40;

template<class Node>
ExpressionPtr expression(Node node) {
    return std::make_unique<Expression>(Expression{std::move(node)});
}

ExpressionPtr literal(Variant value) {
    return expression(Literal{std::move(value)});
}

template<class... Operands>
ExpressionPtr operatorNode(Operation operation, Operands... operands) {
    Apply node{operation, {}};
    (node.operands.push_back(std::move(operands)), ...);
    return expression(std::move(node));
}

// Joins the operands of a long And or Or into a tree of small depth.
ExpressionPtr balanced(Operation operation, std::vector<ExpressionPtr>& operands, std::size_t from,
                       std::size_t count) {
    if (count == 1)
        return std::move(operands[from]);
    const std::size_t half = count / 2;
    ExpressionPtr left = balanced(operation, operands, from, half);
    return operatorNode(operation, std::move(left),
                        balanced(operation, operands, from + half, count - half));
}

} // namespace

// Counts levels of the tree below the current rule, and gives them back at its end.
class ExpressionParser::Nesting {
public:
    explicit Nesting(int& depth) : m_depth(depth), m_before(depth) {}
    ~Nesting() { m_depth = m_before; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

    Nesting& deepen() {
        if (m_depth >= maximumDepth)
            throw RunError::make(ErrorNumber::tooComplex);
        ++m_depth;
        return *this;
    }

private:
    int& m_depth;
    int m_before;
};

ExpressionPtr ExpressionParser::parse() {
    Nesting nesting(m_depth);
    nesting.deepen();
    m_tokens.enterExpression();
    return disjunction();
}

ExpressionPtr ExpressionParser::disjunction() {
    std::vector<ExpressionPtr> operands;
    do
        operands.push_back(conjunction());
    while (m_tokens.acceptKeyword("or"_L1));
    return balanced(Operation::Or, operands, 0, operands.size());
}

ExpressionPtr ExpressionParser::conjunction() {
    std::vector<ExpressionPtr> operands;
    do
        operands.push_back(negation());
    while (m_tokens.acceptKeyword("and"_L1));
    return balanced(Operation::And, operands, 0, operands.size());
}

ExpressionPtr ExpressionParser::negation() {
    if (!m_tokens.acceptKeyword("not"_L1))
        return predicate();
    Nesting nesting(m_depth);
    nesting.deepen();
    return operatorNode(Operation::Not, negation());
}

ExpressionPtr ExpressionParser::predicate() {
    ExpressionPtr left =
        leftChain(&ExpressionParser::concatenation, {{"="_L1, Operation::Equal},
                                                     {"<>"_L1, Operation::NotEqual},
                                                     {"<="_L1, Operation::LessOrEqual},
                                                     {">="_L1, Operation::GreaterOrEqual},
                                                     {"<"_L1, Operation::Less},
                                                     {">"_L1, Operation::Greater}});
    return predicateTail(std::move(left));
}

ExpressionPtr ExpressionParser::predicateTail(ExpressionPtr left) {
    if (m_tokens.atKeyword("is"_L1))
        return isNullTail(std::move(left));
    const bool negated = m_tokens.acceptKeyword("not"_L1);
    ExpressionPtr result;
    if (m_tokens.acceptKeyword("between"_L1))
        result = betweenTail(std::move(left));
    else if (m_tokens.acceptKeyword("in"_L1))
        result = inTail(std::move(left));
    else if (m_tokens.acceptKeyword("like"_L1))
        result = operatorNode(Operation::Like, std::move(left), concatenation());
    else if (negated)
        m_tokens.fail();
    else
        return left;
    return negated ? operatorNode(Operation::Not, std::move(result)) : std::move(result);
}

ExpressionPtr ExpressionParser::isNullTail(ExpressionPtr left) {
    m_tokens.expectKeyword("is"_L1);
    const bool negated = m_tokens.acceptKeyword("not"_L1);
    m_tokens.expectKeyword("null"_L1);
    return operatorNode(negated ? Operation::IsNotNull : Operation::IsNull, std::move(left));
}

ExpressionPtr ExpressionParser::betweenTail(ExpressionPtr left) {
    ExpressionPtr low = concatenation();
    m_tokens.expectKeyword("and"_L1);
    return operatorNode(Operation::Between, std::move(left), std::move(low), concatenation());
}

ExpressionPtr ExpressionParser::inTail(ExpressionPtr left) {
    m_tokens.expectSymbol("("_L1);
    if (m_tokens.atKeyword("select"_L1))
        return expression(InSelect{std::move(left), subquery()});
    InList list{std::move(left), {}, {}};
    do
        listItem(list);
    while (m_tokens.acceptSymbol(","_L1));
    m_tokens.expectSymbol(")"_L1);
    return expression(std::move(list));
}

// Most lists are thousands of texts, for which a node each would be too much.
void ExpressionParser::listItem(InList& list) {
    if (m_tokens.atLoneText())
        list.texts << m_tokens.take().text;
    else
        list.items.push_back(parse());
}

ExpressionPtr ExpressionParser::concatenation() {
    return leftChain(&ExpressionParser::sum, {{"&"_L1, Operation::Concat}});
}

ExpressionPtr ExpressionParser::sum() {
    return leftChain(&ExpressionParser::modulo,
                     {{"+"_L1, Operation::Add}, {"-"_L1, Operation::Subtract}});
}

ExpressionPtr ExpressionParser::modulo() {
    return leftChain(&ExpressionParser::product, {{"mod"_L1, Operation::Modulo}});
}

ExpressionPtr ExpressionParser::product() {
    return leftChain(&ExpressionParser::signedOperand,
                     {{"*"_L1, Operation::Multiply}, {"/"_L1, Operation::Divide}});
}

bool ExpressionParser::acceptOperator(QLatin1StringView sign) {
    return m_tokens.acceptSymbol(sign) || m_tokens.acceptKeyword(sign);
}

ExpressionPtr ExpressionParser::leftChain(Rule operand,
                                          std::initializer_list<BinaryOperator> operators) {
    Nesting nesting(m_depth);
    ExpressionPtr left = (this->*operand)();
    for (;;) {
        const auto* found =
            std::find_if(operators.begin(), operators.end(), [this](const BinaryOperator& entry) {
                return acceptOperator(entry.sign);
            });
        if (found == operators.end())
            return left;
        nesting.deepen(); // each link makes the tree one level deeper
        left = operatorNode(found->operation, std::move(left), (this->*operand)());
    }
}

ExpressionPtr ExpressionParser::signedOperand() {
    if (m_tokens.acceptSymbol("+"_L1))
        return signedOperandNested();
    if (m_tokens.acceptSymbol("-"_L1))
        return operatorNode(Operation::Negate, signedOperandNested());
    return primary();
}

ExpressionPtr ExpressionParser::signedOperandNested() {
    Nesting nesting(m_depth);
    nesting.deepen();
    return signedOperand();
}

ExpressionPtr ExpressionParser::primary() {
    switch (m_tokens.peek().kind) {
    case TokenKind::Text:
        return literal(Variant(m_tokens.take().text));
    case TokenKind::Number:
        return number();
    case TokenKind::Date:
        return dateLiteral();
    default:
        break;
    }
    if (m_tokens.acceptSymbol("("_L1))
        return parenthesized();
    if (m_tokens.acceptKeyword("null"_L1))
        return literal(Variant::null());
    if (m_tokens.acceptKeyword("true"_L1))
        return literal(Variant(true));
    if (m_tokens.acceptKeyword("false"_L1))
        return literal(Variant(false));
    return nameOrCall();
}

// With its closing parenthesis. An error behind that is one of the outer statement again.
std::unique_ptr<SelectStatement> ExpressionParser::subquery() {
    Nesting nesting(m_depth);
    nesting.deepen();
    const TokenStream::Place place = m_tokens.place();
    auto select = m_selectParser();
    m_tokens.expectSymbol(")"_L1);
    m_tokens.returnTo(place);
    return select;
}

ExpressionPtr ExpressionParser::parenthesized() {
    if (m_tokens.atKeyword("select"_L1))
        return expression(Subquery{subquery()});
    ExpressionPtr result = parse();
    m_tokens.expectSymbol(")"_L1);
    return result;
}

ExpressionPtr ExpressionParser::nameOrCall() {
    if (m_tokens.peek().kind == TokenKind::Name && m_tokens.atSymbol("("_L1, 1))
        return call(m_tokens.expectName());
    const bool bracketed = m_tokens.peek().kind == TokenKind::BracketedName;
    QString name = m_tokens.expectName();
    if (m_tokens.acceptSymbol("."_L1))
        return expression(Name{std::move(name), m_tokens.expectName(), true});
    return expression(Name{{}, std::move(name), bracketed});
}

// The star of Count(*) is a call without arguments.
ExpressionPtr ExpressionParser::call(const QString& function) {
    m_tokens.expectSymbol("("_L1);
    if (m_tokens.acceptSymbol(")"_L1))
        return expression(Call{function, {}});
    Call result{function, {}};
    if (m_tokens.atSymbol("*"_L1) && m_tokens.atSymbol(")"_L1, 1)) {
        m_tokens.take();
        result.function += u'*';
    } else {
        do
            result.arguments.push_back(parse());
        while (m_tokens.acceptSymbol(","_L1));
    }
    m_tokens.expectSymbol(")"_L1);
    return expression(std::move(result));
}

ExpressionPtr ExpressionParser::number() {
    const QString text = m_tokens.take().text;
    bool whole = false;
    const int value = text.toInt(&whole);
    if (whole)
        return literal(Variant(value));
    const auto real = parseNumber(text);
    if (!real)
        m_tokens.failExpression(QStringLiteral("Syntax error in number"));
    return literal(Variant(*real));
}

ExpressionPtr ExpressionParser::dateLiteral() {
    const auto date = Dates::parse(m_tokens.peek().text);
    if (!date)
        m_tokens.failExpression(QStringLiteral("Syntax error in date"));
    m_tokens.take();
    return literal(Variant(*date));
}

} // namespace tallyroom::sql
