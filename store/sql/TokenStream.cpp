#include "store/sql/TokenStream.h"

#include "common/RunError.h"

#include <algorithm>

namespace tallyroom::sql {

using namespace Qt::Literals::StringLiterals;

namespace {

// Words that can be names only in brackets.
constexpr QLatin1StringView reservedWords[] = {
    "all"_L1,  "and"_L1,      "as"_L1,     "asc"_L1,    "between"_L1, "by"_L1,    "delete"_L1,
    "desc"_L1, "distinct"_L1, "drop"_L1,   "false"_L1,  "from"_L1,    "group"_L1, "having"_L1,
    "in"_L1,   "inner"_L1,    "insert"_L1, "into"_L1,   "is"_L1,      "join"_L1,  "like"_L1,
    "mod"_L1,  "not"_L1,      "null"_L1,   "on"_L1,     "or"_L1,      "order"_L1, "select"_L1,
    "set"_L1,  "true"_L1,     "union"_L1,  "update"_L1, "values"_L1,  "where"_L1,
};

bool isReserved(const QString& word) {
    const QString lower = word.toLower();
    return std::find(std::begin(reservedWords), std::end(reservedWords), lower) !=
           std::end(reservedWords);
}

} // namespace

TokenStream::TokenStream(const QString& text, bool criteria)
    : m_text(text), m_lexer(text), m_criteria(criteria) {
    for (Token& token : m_tokens)
        token = m_lexer.next();
}

Token TokenStream::take() {
    Token token = std::move(m_tokens[m_first]);
    advance();
    return token;
}

void TokenStream::advance() {
    m_tokens[m_first] = m_lexer.next();
    m_first = (m_first + 1) % m_tokens.size();
}

bool TokenStream::atKeyword(QLatin1StringView keyword, std::size_t ahead) const {
    const Token& token = peek(ahead);
    return token.kind == TokenKind::Name && token.text.compare(keyword, Qt::CaseInsensitive) == 0;
}

bool TokenStream::acceptKeyword(QLatin1StringView keyword) {
    if (!atKeyword(keyword))
        return false;
    advance();
    return true;
}

void TokenStream::expectKeyword(QLatin1StringView keyword) {
    if (!acceptKeyword(keyword))
        fail();
}

bool TokenStream::atSymbol(QLatin1StringView symbol, std::size_t ahead) const {
    const Token& token = peek(ahead);
    return token.kind == TokenKind::Symbol && token.text == symbol;
}

bool TokenStream::acceptSymbol(QLatin1StringView symbol) {
    if (!atSymbol(symbol))
        return false;
    advance();
    return true;
}

void TokenStream::expectSymbol(QLatin1StringView symbol) {
    if (!acceptSymbol(symbol))
        fail();
}

bool TokenStream::atName() const {
    const Token& token = peek();
    return token.kind == TokenKind::BracketedName ||
           (token.kind == TokenKind::Name && !isReserved(token.text));
}

QString TokenStream::expectName() {
    if (!atName())
        fail();
    return take().text;
}

QString TokenStream::expectText() {
    if (peek().kind != TokenKind::Text)
        fail();
    return take().text;
}

bool TokenStream::atLoneText() const {
    return peek().kind == TokenKind::Text && (atSymbol(","_L1, 1) || atSymbol(")"_L1, 1));
}

void TokenStream::enterClause(int errorNumber) {
    m_place = {errorNumber, -1};
}

void TokenStream::enterExpression() {
    if (m_place.expressionStart < 0)
        m_place.expressionStart = peek().position;
}

void TokenStream::expectEnd() {
    const bool ended = acceptSymbol(";"_L1);
    if (peek().kind == TokenKind::End)
        return;
    if (ended)
        throw RunError::make(ErrorNumber::textAfterStatement);
    fail();
}

QString TokenStream::expressionText() const {
    QString text = m_text.mid(std::max<qsizetype>(m_place.expressionStart, 0)).trimmed();
    if (text.endsWith(u';'))
        text.chop(1);
    return text;
}

void TokenStream::fail() const {
    switch (peek().kind) {
    case TokenKind::UnclosedText:
        failExpression(QStringLiteral("Syntax error in string"));
    case TokenKind::UnclosedDate:
        failExpression(QStringLiteral("Syntax error in date"));
    case TokenKind::BadBrackets:
        throw RunError::make(ErrorNumber::invalidBracketing, {peek().text});
    default:
        break;
    }
    const bool insideExpression =
        m_place.expressionStart >= 0 && m_place.expressionStart != peek().position;
    if (!insideExpression && m_place.clauseError != 0)
        throw RunError::make(m_place.clauseError);
    failExpression(QStringLiteral("Syntax error (missing operator)"));
}

void TokenStream::failExpression(const QString& what) const {
    if (m_criteria)
        throw RunError::make(ErrorNumber::syntaxInCriteria, {what});
    throw RunError::make(ErrorNumber::syntaxInQuery, {what, expressionText()});
}

} // namespace tallyroom::sql
