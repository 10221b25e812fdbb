// The grammar of expressions, weakest binding first.
#pragma once

#include "store/sql/Ast.h"
#include "store/sql/TokenStream.h"

#include <functional>
#include <initializer_list>

namespace tallyroom::sql {

class ExpressionParser {
public:
    explicit ExpressionParser(TokenStream& tokens) : m_tokens(tokens) {}

    // Subqueries are statements, which the expression grammar knows nothing of.
    using SelectParser = std::function<std::unique_ptr<SelectStatement>()>;
    void setSelectParser(SelectParser parser) { m_selectParser = std::move(parser); }

    ExpressionPtr parse();

private:
    class Nesting;

    ExpressionPtr disjunction();
    ExpressionPtr conjunction();
    ExpressionPtr negation();
    ExpressionPtr predicate();
    ExpressionPtr predicateTail(ExpressionPtr left);
    ExpressionPtr isNullTail(ExpressionPtr left);
    ExpressionPtr betweenTail(ExpressionPtr left);
    ExpressionPtr inTail(ExpressionPtr left);
    void listItem(InList& list);
    ExpressionPtr concatenation();
    ExpressionPtr sum();
    ExpressionPtr modulo();
    ExpressionPtr product();
    ExpressionPtr signedOperand();
    ExpressionPtr signedOperandNested();
    ExpressionPtr primary();
    ExpressionPtr parenthesized();
    std::unique_ptr<SelectStatement> subquery();
    ExpressionPtr nameOrCall();
    ExpressionPtr call(const QString& function);
    ExpressionPtr number();
    ExpressionPtr dateLiteral();

    using Rule = ExpressionPtr (ExpressionParser::*)();
    struct BinaryOperator {
        QLatin1StringView sign;
        Operation operation;
    };
    ExpressionPtr leftChain(Rule operand, std::initializer_list<BinaryOperator> operators);
    bool acceptOperator(QLatin1StringView sign);

    TokenStream& m_tokens;
    SelectParser m_selectParser;
    int m_depth = 0;
};

} // namespace tallyroom::sql
