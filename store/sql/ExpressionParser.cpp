#include "store/sql/ExpressionParser.h"

#include "common/DateParser.h"
#include "common/RunError.h"

#include <algorithm>

namespace tallyroom::sql {

namespace {

// Real statements nest less than ten deep; the engines underneath give up soon after a hundred.
constexpr int maximumDepth = 40;

constexpr QLatin1StringView operator""_k(const char* text, std::size_t size) {
    return QLatin1StringView(text, static_cast<qsizetype>(size));
}

ExpressionPtr literal(Variant value) {
    auto node = std::make_unique<Expression>();
    node->value = std::move(value);
    return node;
}

template<class... Operands>
ExpressionPtr operatorNode(Operation operation, Operands... operands) {
    auto node = std::make_unique<Expression>();
    node->kind = NodeKind::Apply;
    node->operation = operation;
    (node->operands.push_back(std::move(operands)), ...);
    return node;
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
    while (m_tokens.acceptKeyword("or"_k));
    return balanced(Operation::Or, operands, 0, operands.size());
}

ExpressionPtr ExpressionParser::conjunction() {
    std::vector<ExpressionPtr> operands;
    do
        operands.push_back(negation());
    while (m_tokens.acceptKeyword("and"_k));
    return balanced(Operation::And, operands, 0, operands.size());
}

ExpressionPtr ExpressionParser::negation() {
    if (!m_tokens.acceptKeyword("not"_k))
        return predicate();
    Nesting nesting(m_depth);
    nesting.deepen();
    return operatorNode(Operation::Not, negation());
}

ExpressionPtr ExpressionParser::predicate() {
    ExpressionPtr left =
        leftChain(&ExpressionParser::concatenation, {{"="_k, Operation::Equal},
                                                     {"<>"_k, Operation::NotEqual},
                                                     {"<="_k, Operation::LessOrEqual},
                                                     {">="_k, Operation::GreaterOrEqual},
                                                     {"<"_k, Operation::Less},
                                                     {">"_k, Operation::Greater}});
    return predicateTail(std::move(left));
}

ExpressionPtr ExpressionParser::predicateTail(ExpressionPtr left) {
    if (m_tokens.atKeyword("is"_k))
        return isNullTail(std::move(left));
    const bool negated = m_tokens.acceptKeyword("not"_k);
    ExpressionPtr result;
    if (m_tokens.acceptKeyword("between"_k))
        result = betweenTail(std::move(left));
    else if (m_tokens.acceptKeyword("in"_k))
        result = inTail(std::move(left));
    else if (m_tokens.acceptKeyword("like"_k))
        result = operatorNode(Operation::Like, std::move(left), concatenation());
    else if (negated)
        m_tokens.fail();
    else
        return left;
    return negated ? operatorNode(Operation::Not, std::move(result)) : std::move(result);
}

ExpressionPtr ExpressionParser::isNullTail(ExpressionPtr left) {
    m_tokens.expectKeyword("is"_k);
    const bool negated = m_tokens.acceptKeyword("not"_k);
    m_tokens.expectKeyword("null"_k);
    return operatorNode(negated ? Operation::IsNotNull : Operation::IsNull, std::move(left));
}

ExpressionPtr ExpressionParser::betweenTail(ExpressionPtr left) {
    ExpressionPtr low = concatenation();
    m_tokens.expectKeyword("and"_k);
    return operatorNode(Operation::Between, std::move(left), std::move(low), concatenation());
}

ExpressionPtr ExpressionParser::inTail(ExpressionPtr left) {
    m_tokens.expectSymbol("("_k);
    auto node = std::make_unique<Expression>();
    node->operands.push_back(std::move(left));
    if (m_tokens.atKeyword("select"_k)) {
        node->kind = NodeKind::InSelect;
        node->select = subquery();
        return node;
    }
    node->kind = NodeKind::InList;
    do
        listItem(*node);
    while (m_tokens.acceptSymbol(","_k));
    m_tokens.expectSymbol(")"_k);
    return node;
}

// Most lists are thousands of texts, for which a node each would be too much.
void ExpressionParser::listItem(Expression& list) {
    if (m_tokens.atLoneText())
        list.texts << m_tokens.take().text;
    else
        list.operands.push_back(parse());
}

ExpressionPtr ExpressionParser::concatenation() {
    return leftChain(&ExpressionParser::sum, {{"&"_k, Operation::Concat}});
}

ExpressionPtr ExpressionParser::sum() {
    return leftChain(&ExpressionParser::modulo,
                     {{"+"_k, Operation::Add}, {"-"_k, Operation::Subtract}});
}

ExpressionPtr ExpressionParser::modulo() {
    return leftChain(&ExpressionParser::product, {{"mod"_k, Operation::Modulo}});
}

ExpressionPtr ExpressionParser::product() {
    return leftChain(&ExpressionParser::signedOperand,
                     {{"*"_k, Operation::Multiply}, {"/"_k, Operation::Divide}});
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
    if (m_tokens.acceptSymbol("+"_k))
        return signedOperandNested();
    if (m_tokens.acceptSymbol("-"_k))
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
    if (m_tokens.acceptSymbol("("_k))
        return parenthesized();
    if (m_tokens.acceptKeyword("null"_k))
        return literal(Variant::null());
    if (m_tokens.acceptKeyword("true"_k))
        return literal(Variant(true));
    if (m_tokens.acceptKeyword("false"_k))
        return literal(Variant(false));
    return nameOrCall();
}

// With its closing parenthesis. An error behind that is one of the outer statement again.
std::unique_ptr<SelectStatement> ExpressionParser::subquery() {
    Nesting nesting(m_depth);
    nesting.deepen();
    const TokenStream::Place place = m_tokens.place();
    auto select = m_selectParser();
    m_tokens.expectSymbol(")"_k);
    m_tokens.returnTo(place);
    return select;
}

ExpressionPtr ExpressionParser::parenthesized() {
    if (m_tokens.atKeyword("select"_k)) {
        auto node = std::make_unique<Expression>();
        node->kind = NodeKind::Subquery;
        node->select = subquery();
        return node;
    }
    ExpressionPtr result = parse();
    m_tokens.expectSymbol(")"_k);
    return result;
}

ExpressionPtr ExpressionParser::nameOrCall() {
    if (m_tokens.peek().kind == TokenKind::Name && m_tokens.atSymbol("("_k, 1))
        return call(m_tokens.expectName());
    auto node = std::make_unique<Expression>();
    node->kind = NodeKind::Name;
    node->bracketed = m_tokens.peek().kind == TokenKind::BracketedName;
    node->name = m_tokens.expectName();
    if (m_tokens.acceptSymbol("."_k)) {
        node->bracketed = true;
        node->qualifier = node->name;
        node->name = m_tokens.expectName();
    }
    return node;
}

// The star of Count(*) is a call without arguments.
ExpressionPtr ExpressionParser::call(const QString& name) {
    auto node = std::make_unique<Expression>();
    node->kind = NodeKind::Call;
    node->name = name;
    m_tokens.expectSymbol("("_k);
    if (m_tokens.acceptSymbol(")"_k))
        return node;
    if (m_tokens.atSymbol("*"_k) && m_tokens.atSymbol(")"_k, 1)) {
        m_tokens.take();
        node->name += u'*';
    } else {
        do
            node->operands.push_back(parse());
        while (m_tokens.acceptSymbol(","_k));
    }
    m_tokens.expectSymbol(")"_k);
    return node;
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
