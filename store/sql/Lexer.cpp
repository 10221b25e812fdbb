#include "store/sql/Lexer.h"

namespace tallyroom::sql {

namespace {

bool startsName(QChar c) {
    return c.isLetter() || c == u'_';
}

bool continuesName(QChar c) {
    return c.isLetterOrNumber() || c == u'_' || c == u'$';
}

} // namespace

QChar Lexer::at(qsizetype position) const {
    return position < m_text.size() ? m_text.at(position) : QChar();
}

Token Lexer::next() {
    while (m_position < m_text.size() && m_text.at(m_position).isSpace())
        ++m_position;
    m_start = m_position;
    if (m_position >= m_text.size())
        return {TokenKind::End, {}, m_start};
    const QChar c = at(m_position);
    if (startsName(c))
        return word();
    if (c.isDigit() || (c == u'.' && at(m_position + 1).isDigit()))
        return number();
    if (c == u'\'' || c == u'"')
        return text(c);
    if (c == u'#')
        return delimited(u'#', TokenKind::Date, TokenKind::UnclosedDate);
    if (c == u'[')
        return bracketedName();
    return symbol();
}

Token Lexer::token(TokenKind kind) const {
    return {kind, m_text.mid(m_start, m_position - m_start), m_start};
}

Token Lexer::word() {
    while (continuesName(at(m_position)))
        ++m_position;
    return token(TokenKind::Name);
}

void Lexer::skipDigits() {
    while (at(m_position).isDigit())
        ++m_position;
}

Token Lexer::number() {
    skipDigits();
    if (at(m_position) == u'.') {
        ++m_position;
        skipDigits();
    }
    if (at(m_position).toLower() == u'e' && exponentFollows()) {
        m_position += 2;
        skipDigits();
    }
    return token(TokenKind::Number);
}

bool Lexer::exponentFollows() const {
    const QChar next = at(m_position + 1);
    return next.isDigit() || ((next == u'-' || next == u'+') && at(m_position + 2).isDigit());
}

// A quote inside the text is written twice.
Token Lexer::text(QChar quote) {
    bool doubled = false;
    for (m_position = m_start + 1;; m_position += 2) {
        m_position = m_text.indexOf(quote, m_position);
        if (m_position < 0) {
            m_position = m_text.size();
            return token(TokenKind::UnclosedText);
        }
        if (at(m_position + 1) != quote)
            break;
        doubled = true;
    }
    QString value = m_text.sliced(m_start + 1, m_position - m_start - 1);
    ++m_position;
    return textToken(doubled ? value.replace(QString(2, quote), quote) : value);
}

// An engine would take a NUL for the end of the statement.
Token Lexer::textToken(const QString& value) const {
    if (value.contains(QChar(QChar::Null)))
        return token(TokenKind::UnclosedText);
    return {TokenKind::Text, value, m_start};
}

Token Lexer::delimited(QChar end, TokenKind closed, TokenKind unclosed) {
    const qsizetype close = m_text.indexOf(end, m_start + 1);
    m_position = close < 0 ? m_text.size() : close + 1;
    if (close < 0)
        return token(unclosed);
    return {closed, m_text.mid(m_start + 1, close - m_start - 1), m_start};
}

Token Lexer::bracketedName() {
    Token name = delimited(u']', TokenKind::BracketedName, TokenKind::BadBrackets);
    if (name.kind == TokenKind::BracketedName && name.text.trimmed().isEmpty())
        name.kind = TokenKind::BadBrackets;
    return name;
}

// "!" joins a table and its column as "." does.
Token Lexer::symbol() {
    static constexpr QStringView pairs[] = {u"<>", u"<=", u">="};
    for (const QStringView pair : pairs) {
        if (QStringView(m_text).mid(m_position, 2) == pair) {
            m_position += 2;
            return token(TokenKind::Symbol);
        }
    }
    static const QString comma = QStringLiteral(",");
    const QChar c = at(m_position++);
    if (c == u',')
        return {TokenKind::Symbol, comma, m_start}; // the lists' own, at no cost
    if (c == u'!')
        return {TokenKind::Symbol, QStringLiteral("."), m_start};
    return token(TokenKind::Symbol);
}

} // namespace tallyroom::sql
