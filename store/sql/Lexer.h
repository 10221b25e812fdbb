// Splits a statement into tokens.
#pragma once

#include <QString>

namespace tallyroom::sql {

enum class TokenKind {
    Name,          // a word, which may be a keyword
    BracketedName, // [a name]; text is what stands between the brackets
    Number,
    Text, // 'a text' or "a text"; text is its value
    Date, // #a date#; text is what stands between the signs
    Symbol,
    UnclosedText,
    UnclosedDate,
    BadBrackets, // [], or [ without ]
    End
};

struct Token {
    TokenKind kind = TokenKind::End;
    QString text;
    qsizetype position = 0; // of its first character in the statement
};

// Never fails: what is malformed becomes a token that no rule of the grammar accepts.
class Lexer {
public:
    explicit Lexer(const QString& statement) : m_text(statement) {}

    // At the end, and ever after it, End.
    Token next();

private:
    QChar at(qsizetype position) const;
    Token token(TokenKind kind) const;
    Token word();
    void skipDigits();
    Token number();
    bool exponentFollows() const;
    Token text(QChar quote);
    Token textToken(const QString& value) const;
    Token delimited(QChar end, TokenKind closed, TokenKind unclosed);
    Token bracketedName();
    Token symbol();

    QString m_text;
    qsizetype m_position = 0;
    qsizetype m_start = 0; // of the token that is being read
};

} // namespace tallyroom::sql
