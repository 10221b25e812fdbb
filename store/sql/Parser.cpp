#include "store/sql/Parser.h"

#include "common/RunError.h"
#include "store/sql/ExpressionParser.h"
#include "store/sql/TokenStream.h"

namespace tallyroom::sql {

using namespace Qt::Literals::StringLiterals;

namespace {

class StatementParser {
public:
    explicit StatementParser(TokenStream& tokens) : m_tokens(tokens), m_expressions(tokens) {
        m_expressions.setSelectParser(
            [this] { return std::make_unique<SelectStatement>(select()); });
    }

    Statement statement() {
        m_tokens.enterClause(ErrorNumber::invalidStatement);
        if (m_tokens.atKeyword("select"_L1))
            return select();
        if (m_tokens.acceptKeyword("delete"_L1))
            return deleteRows();
        if (m_tokens.acceptKeyword("insert"_L1))
            return insert();
        if (m_tokens.acceptKeyword("update"_L1))
            return update();
        if (m_tokens.acceptKeyword("drop"_L1))
            return drop();
        m_tokens.fail();
    }

    ExpressionPtr criteria() { return expression(); }

    std::vector<OrderItem> orderItems() {
        m_tokens.enterClause(ErrorNumber::syntaxInOrderBy);
        std::vector<OrderItem> items;
        do {
            OrderItem item{expression(), false};
            item.descending = m_tokens.acceptKeyword("desc"_L1);
            if (!item.descending)
                m_tokens.acceptKeyword("asc"_L1);
            items.push_back(std::move(item));
        } while (m_tokens.acceptSymbol(","_L1));
        return items;
    }

    SelectStatement select() {
        m_tokens.expectKeyword("select"_L1);
        SelectStatement result;
        m_tokens.enterClause(ErrorNumber::syntaxInSelect);
        result.distinct = m_tokens.acceptKeyword("distinct"_L1);
        if (!result.distinct)
            m_tokens.acceptKeyword("all"_L1);
        do
            result.items.push_back(selectItem());
        while (m_tokens.acceptSymbol(","_L1));
        if (m_tokens.acceptKeyword("from"_L1)) {
            result.from = tableReference();
            selectClauses(result);
        }
        return result;
    }

private:
    ExpressionPtr expression() { return m_expressions.parse(); }

    SelectItem selectItem() {
        m_tokens.enterClause(ErrorNumber::syntaxInSelect);
        SelectItem item;
        if (m_tokens.acceptSymbol("*"_L1))
            return item;
        if (m_tokens.atName() && m_tokens.atSymbol("."_L1, 1) && m_tokens.atSymbol("*"_L1, 2)) {
            item.table = m_tokens.take().text;
            m_tokens.take();
            m_tokens.take();
            return item;
        }
        item.expression = expression();
        if (m_tokens.acceptKeyword("as"_L1))
            item.alias = m_tokens.expectName();
        return item;
    }

    TableReference tableReference() {
        m_tokens.enterClause(ErrorNumber::syntaxInFrom);
        TableReference table;
        table.name = m_tokens.expectName();
        const bool as = m_tokens.acceptKeyword("as"_L1);
        table.alias = as || m_tokens.atName() ? m_tokens.expectName() : table.name;
        return table;
    }

    void selectClauses(SelectStatement& result) {
        result.where = whereClause();
        if (m_tokens.acceptKeyword("group"_L1)) {
            m_tokens.expectKeyword("by"_L1);
            result.groupBy = expressionList();
        }
        if (m_tokens.acceptKeyword("having"_L1)) {
            m_tokens.enterClause(0);
            result.having = expression();
        }
        if (m_tokens.acceptKeyword("order"_L1)) {
            m_tokens.enterClause(ErrorNumber::syntaxInOrderBy);
            m_tokens.expectKeyword("by"_L1);
            result.orderBy = orderItems();
        }
    }

    ExpressionPtr whereClause() {
        if (!m_tokens.acceptKeyword("where"_L1))
            return nullptr;
        m_tokens.enterClause(0);
        return expression();
    }

    std::vector<ExpressionPtr> expressionList() {
        m_tokens.enterClause(0);
        std::vector<ExpressionPtr> list;
        do
            list.push_back(expression());
        while (m_tokens.acceptSymbol(","_L1));
        return list;
    }

    DeleteStatement deleteRows() {
        m_tokens.enterClause(ErrorNumber::syntaxInFrom);
        if (m_tokens.atName() && m_tokens.atSymbol("."_L1, 1)) {
            m_tokens.take();
            m_tokens.take();
            m_tokens.expectSymbol("*"_L1);
        } else {
            m_tokens.acceptSymbol("*"_L1);
        }
        m_tokens.expectKeyword("from"_L1);
        DeleteStatement result;
        result.table = m_tokens.expectName();
        result.where = whereClause();
        return result;
    }

    InsertStatement insert() {
        m_tokens.enterClause(ErrorNumber::syntaxInInsert);
        m_tokens.expectKeyword("into"_L1);
        InsertStatement result;
        result.table = m_tokens.expectName();
        if (m_tokens.acceptSymbol("("_L1))
            result.columns = nameList();
        if (m_tokens.acceptKeyword("in"_L1))
            result.file = m_tokens.expectText();
        if (m_tokens.acceptKeyword("values"_L1)) {
            m_tokens.expectSymbol("("_L1);
            result.rows = expressionList();
            m_tokens.expectSymbol(")"_L1);
        } else {
            result.rows = select();
        }
        return result;
    }

    QStringList nameList() {
        QStringList names;
        do
            names << m_tokens.expectName();
        while (m_tokens.acceptSymbol(","_L1));
        m_tokens.expectSymbol(")"_L1);
        return names;
    }

    UpdateStatement update() {
        UpdateStatement result;
        m_tokens.enterClause(ErrorNumber::syntaxInUpdate);
        result.table = m_tokens.expectName();
        m_tokens.expectKeyword("set"_L1);
        do
            result.assignments.push_back(assignment());
        while (m_tokens.acceptSymbol(","_L1));
        result.where = whereClause();
        return result;
    }

    Assignment assignment() {
        m_tokens.enterClause(ErrorNumber::syntaxInUpdate);
        Assignment result;
        result.column = m_tokens.expectName();
        if (m_tokens.acceptSymbol("."_L1))
            result.column = m_tokens.expectName();
        m_tokens.expectSymbol("="_L1);
        result.value = expression();
        return result;
    }

    DropStatement drop() {
        m_tokens.enterClause(ErrorNumber::syntaxInDrop);
        m_tokens.expectKeyword("table"_L1);
        return {m_tokens.expectName()};
    }

    TokenStream& m_tokens;
    ExpressionParser m_expressions;
};

// What the rule reads, which must be all of the text.
template<class Result>
Result parseAll(const QString& text, bool criteria, Result (StatementParser::*rule)()) {
    TokenStream tokens(text, criteria);
    StatementParser parser(tokens);
    Result result = (parser.*rule)();
    tokens.expectEnd();
    return result;
}

} // namespace

Statement parseStatement(const QString& text) {
    return parseAll(text, false, &StatementParser::statement);
}

ExpressionPtr parseCriteria(const QString& text) {
    return parseAll(text, true, &StatementParser::criteria);
}

std::vector<OrderItem> parseSort(const QString& text) {
    return parseAll(text, false, &StatementParser::orderItems);
}

bool isTableName(const QString& text) {
    const TokenStream tokens(text, false);
    return tokens.atName() && tokens.peek(1).kind == TokenKind::End;
}

} // namespace tallyroom::sql
