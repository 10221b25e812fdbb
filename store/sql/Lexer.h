// Splits a statement into tokens.
#pragma once

#include <QString>
#include <vector>

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

// Never fails: what is malformed becomes a token that no rule of the grammar accepts. The last
// token is always End.
std::vector<Token> tokenize(const QString& statement);

} // namespace tallyroom::sql
