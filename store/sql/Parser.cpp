#include "store/sql/Parser.h"

#include "common/RunError.h"
#include "store/sql/ExpressionParser.h"
#include "store/sql/TokenStream.h"

namespace tallyroom::sql {

namespace {

constexpr QLatin1StringView operator""_k(const char* text, std::size_t size) {
    return QLatin1StringView(text, static_cast<qsizetype>(size));
}

class StatementParser {
public:
    explicit StatementParser(TokenStream& tokens) : m_tokens(tokens), m_expressions(tokens) {
        m_expressions.setSelectParser(
            [this] { return std::make_unique<SelectStatement>(select()); });
    }

    Statement statement() {
        m_tokens.enterClause(ErrorNumber::invalidStatement);
        if (m_tokens.atKeyword("select"_k))
            return select();
        if (m_tokens.acceptKeyword("delete"_k))
            return deleteRows();
        if (m_tokens.acceptKeyword("insert"_k))
            return insert();
        if (m_tokens.acceptKeyword("update"_k))
            return update();
        if (m_tokens.acceptKeyword("drop"_k))
            return drop();
        m_tokens.fail();
    }

    ExpressionPtr criteria() { return expression(); }

    std::vector<OrderItem> orderItems() {
        m_tokens.enterClause(ErrorNumber::syntaxInOrderBy);
        std::vector<OrderItem> items;
        do {
            OrderItem item{expression(), false};
            item.descending = m_tokens.acceptKeyword("desc"_k);
            if (!item.descending)
                m_tokens.acceptKeyword("asc"_k);
            items.push_back(std::move(item));
        } while (m_tokens.acceptSymbol(","_k));
        return items;
    }

    SelectStatement select() {
        m_tokens.expectKeyword("select"_k);
        SelectStatement result;
        m_tokens.enterClause(ErrorNumber::syntaxInSelect);
        result.distinct = m_tokens.acceptKeyword("distinct"_k);
        if (!result.distinct)
            m_tokens.acceptKeyword("all"_k);
        do
            result.items.push_back(selectItem());
        while (m_tokens.acceptSymbol(","_k));
        if (m_tokens.acceptKeyword("from"_k)) {
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
        if (m_tokens.acceptSymbol("*"_k))
            return item;
        if (m_tokens.atName() && m_tokens.atSymbol("."_k, 1) && m_tokens.atSymbol("*"_k, 2)) {
            item.table = m_tokens.take().text;
            m_tokens.take();
            m_tokens.take();
            return item;
        }
        item.expression = expression();
        if (m_tokens.acceptKeyword("as"_k))
            item.alias = m_tokens.expectName();
        return item;
    }

    TableReference tableReference() {
        m_tokens.enterClause(ErrorNumber::syntaxInFrom);
        TableReference table;
        table.name = m_tokens.expectName();
        const bool as = m_tokens.acceptKeyword("as"_k);
        table.alias = as || m_tokens.atName() ? m_tokens.expectName() : table.name;
        return table;
    }

    void selectClauses(SelectStatement& result) {
        result.where = whereClause();
        if (m_tokens.acceptKeyword("group"_k)) {
            m_tokens.expectKeyword("by"_k);
            result.groupBy = expressionList();
        }
        if (m_tokens.acceptKeyword("having"_k)) {
            m_tokens.enterClause(0);
            result.having = expression();
        }
        if (m_tokens.acceptKeyword("order"_k)) {
            m_tokens.enterClause(ErrorNumber::syntaxInOrderBy);
            m_tokens.expectKeyword("by"_k);
            result.orderBy = orderItems();
        }
    }

    ExpressionPtr whereClause() {
        if (!m_tokens.acceptKeyword("where"_k))
            return nullptr;
        m_tokens.enterClause(0);
        return expression();
    }

    std::vector<ExpressionPtr> expressionList() {
        m_tokens.enterClause(0);
        std::vector<ExpressionPtr> list;
        do
            list.push_back(expression());
        while (m_tokens.acceptSymbol(","_k));
        return list;
    }

    DeleteStatement deleteRows() {
        m_tokens.enterClause(ErrorNumber::syntaxInFrom);
        if (m_tokens.atName() && m_tokens.atSymbol("."_k, 1)) {
            m_tokens.take();
            m_tokens.take();
            m_tokens.expectSymbol("*"_k);
        } else {
            m_tokens.acceptSymbol("*"_k);
        }
        m_tokens.expectKeyword("from"_k);
        DeleteStatement result;
        result.table = m_tokens.expectName();
        result.where = whereClause();
        return result;
    }

    InsertStatement insert() {
        m_tokens.enterClause(ErrorNumber::syntaxInInsert);
        m_tokens.expectKeyword("into"_k);
        InsertStatement result;
        result.table = m_tokens.expectName();
        if (m_tokens.acceptSymbol("("_k))
            result.columns = nameList();
        if (m_tokens.acceptKeyword("in"_k))
            result.file = m_tokens.expectText();
        if (m_tokens.acceptKeyword("values"_k)) {
            m_tokens.expectSymbol("("_k);
            result.values = expressionList();
            m_tokens.expectSymbol(")"_k);
        } else {
            result.select = std::make_unique<SelectStatement>(select());
        }
        return result;
    }

    QStringList nameList() {
        QStringList names;
        do
            names << m_tokens.expectName();
        while (m_tokens.acceptSymbol(","_k));
        m_tokens.expectSymbol(")"_k);
        return names;
    }

    UpdateStatement update() {
        UpdateStatement result;
        m_tokens.enterClause(ErrorNumber::syntaxInUpdate);
        result.table = m_tokens.expectName();
        m_tokens.expectKeyword("set"_k);
        do
            result.assignments.push_back(assignment());
        while (m_tokens.acceptSymbol(","_k));
        result.where = whereClause();
        return result;
    }

    Assignment assignment() {
        m_tokens.enterClause(ErrorNumber::syntaxInUpdate);
        Assignment result;
        result.column = m_tokens.expectName();
        if (m_tokens.acceptSymbol("."_k))
            result.column = m_tokens.expectName();
        m_tokens.expectSymbol("="_k);
        result.value = expression();
        return result;
    }

    DropStatement drop() {
        m_tokens.enterClause(ErrorNumber::syntaxInDrop);
        m_tokens.expectKeyword("table"_k);
        return {m_tokens.expectName()};
    }

    TokenStream& m_tokens;
    ExpressionParser m_expressions;
};

} // namespace

Statement parseStatement(const QString& text) {
    TokenStream tokens(text, false);
    StatementParser parser(tokens);
    Statement statement = parser.statement();
    tokens.expectEnd();
    return statement;
}

ExpressionPtr parseCriteria(const QString& text) {
    TokenStream tokens(text, true);
    StatementParser parser(tokens);
    ExpressionPtr criteria = parser.criteria();
    tokens.expectEnd();
    return criteria;
}

std::vector<OrderItem> parseSort(const QString& text) {
    TokenStream tokens(text, false);
    StatementParser parser(tokens);
    std::vector<OrderItem> items = parser.orderItems();
    tokens.expectEnd();
    return items;
}

bool isTableName(const QString& text) {
    const TokenStream tokens(text, false);
    return tokens.atName() && tokens.peek(1).kind == TokenKind::End;
}

} // namespace tallyroom::sql
