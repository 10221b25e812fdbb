#include "store/sql/TokenStream.h"

#include "common/RunError.h"

#include <algorithm>

namespace tallyroom::sql {

namespace {

// Words that can be names only in brackets.
constexpr QLatin1StringView reservedWords[] = {
    QLatin1StringView("all"),    QLatin1StringView("and"),     QLatin1StringView("as"),
    QLatin1StringView("asc"),    QLatin1StringView("between"), QLatin1StringView("by"),
    QLatin1StringView("delete"), QLatin1StringView("desc"),    QLatin1StringView("distinct"),
    QLatin1StringView("drop"),   QLatin1StringView("false"),   QLatin1StringView("from"),
    QLatin1StringView("group"),  QLatin1StringView("having"),  QLatin1StringView("in"),
    QLatin1StringView("inner"),  QLatin1StringView("insert"),  QLatin1StringView("into"),
    QLatin1StringView("is"),     QLatin1StringView("join"),    QLatin1StringView("like"),
    QLatin1StringView("mod"),    QLatin1StringView("not"),     QLatin1StringView("null"),
    QLatin1StringView("on"),     QLatin1StringView("or"),      QLatin1StringView("order"),
    QLatin1StringView("select"), QLatin1StringView("set"),     QLatin1StringView("true"),
    QLatin1StringView("union"),  QLatin1StringView("update"),  QLatin1StringView("values"),
    QLatin1StringView("where"),
};

bool isReserved(const QString& word) {
    const QString lower = word.toLower();
    return std::any_of(std::begin(reservedWords), std::end(reservedWords),
                       [&](QLatin1StringView reserved) { return lower == reserved; });
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
    return peek().kind == TokenKind::Text &&
           (atSymbol(QLatin1StringView(","), 1) || atSymbol(QLatin1StringView(")"), 1));
}

void TokenStream::enterClause(int errorNumber) {
    m_place = {errorNumber, -1};
}

void TokenStream::enterExpression() {
    if (m_place.expressionStart < 0)
        m_place.expressionStart = peek().position;
}

void TokenStream::expectEnd() {
    const bool ended = acceptSymbol(QLatin1StringView(";"));
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
