// Tokens with a reading position, and the errors that they lead to.
#pragma once

#include "store/sql/Lexer.h"

#include <array>
#include <cstddef>

namespace tallyroom::sql {

class TokenStream {
public:
    // Criteria are reported as such: 3077 in place of 3075.
    TokenStream(const QString& text, bool criteria);

    static constexpr std::size_t lookahead = 2;
    const Token& peek(std::size_t ahead = 0) const {
        Q_ASSERT(ahead <= lookahead);
        return m_tokens[(m_first + ahead) % m_tokens.size()];
    }
    Token take();
    void advance();

    bool atKeyword(QLatin1StringView keyword, std::size_t ahead = 0) const;
    bool acceptKeyword(QLatin1StringView keyword);
    void expectKeyword(QLatin1StringView keyword);
    bool atSymbol(QLatin1StringView symbol, std::size_t ahead = 0) const;
    bool acceptSymbol(QLatin1StringView symbol);
    void expectSymbol(QLatin1StringView symbol);

    // A name in brackets, or a word that the language does not reserve.
    bool atName() const;
    QString expectName();
    QString expectText();
    // A text that is all of its item of a list.
    bool atLoneText() const;

    // Where the reader is, for the error: a clause with a number of its own, or an expression.
    struct Place {
        int clauseError = 0;
        qsizetype expressionStart = -1; // −1 outside expressions
    };
    void enterClause(int errorNumber);
    void enterExpression();
    Place place() const { return m_place; }
    void returnTo(Place place) { m_place = place; }

    // Only an end, with or without a semicolon, may follow.
    void expectEnd();

    [[noreturn]] void fail() const;
    [[noreturn]] void failExpression(const QString& what) const;

private:
    QString expressionText() const;

    QString m_text;
    Lexer m_lexer;
    std::array<Token, lookahead + 1> m_tokens; // in a ring
    std::size_t m_first = 0;                   // where the next one is
    Place m_place;
    bool m_criteria;
};

} // namespace tallyroom::sql
