// An engine's way of writing statements, as data. A further engine is a further constant.
#pragma once

#include "store/sql/Operation.h"

#include <QChar>
#include <array>

namespace tallyroom::sql {

// In the templates $1 to $9 stand for the parts and $$ for a dollar sign; every template is a whole
// that needs no further parentheses.
struct Dialect {
    QChar nameQuote;
    QChar textQuote;
    const char16_t* nullLiteral;
    const char16_t* trueLiteral;
    const char16_t* falseLiteral;
    // Where the type of a Null has to be told, $1 is the null literal.
    const char16_t* dateLiteral;  // $1 is a text: YYYY-MM-DD HH:MM:SS
    const char16_t* wholeLiteral; // $1 are digits ...
    const char16_t* realLiteral;  // ... with a point or an exponent
    const char16_t* keyColumn;    // by which a row is found again
    const char16_t* hasKey;       // $1 a key, $2 the parameter of the keys that are wanted
    const char16_t* parameter;    // the $1st value that is bound to a statement
    const char16_t* ascending;    // Nulls come first
    const char16_t* descending;   // Nulls come last
    // How doubles are left out: by what is read, or by keys of it beside it.
    enum class Distinct { Values, OnKeys };
    Distinct distinct;
    const char16_t* deleteRows; // $1 table, $2 alias, $3 condition
    // Rows that cannot be kept are skipped.
    const char16_t* insertRows; // $1 table, $2 columns, $3 rows
    const char16_t* updateRows; // $1 table, $2 alias, $3 assignments, $4 condition
    // One row of a recordset; what cannot be kept is an error.
    const char16_t* insertRow; // $1 table, $2 columns, $3 parameters
    const char16_t* updateRow; // $1 table, $2 assignments, $3 key, $4 its parameter
    const char16_t* deleteRow; // $1 table, $2 key, $3 its parameter
    const char16_t* dropTable;
    const char16_t* tableWithAlias;
    const char16_t* singleValue; // $1 a query of one column "v"; fails on a second row
    const char16_t* inSet;       // $1 value, $2 list or query
    const char16_t* inTexts;     // $1 text, $2 a query of one column "v", in any spelling
    // $1 a text as CaseBlind and Collated give it, $2 a JSON array of texts as they are.
    const char16_t* inCaseBlindTexts;
    const char16_t* inCollatedTexts;
    std::array<const char16_t*, operationCount> operations;

    const char16_t* operation(Operation operation) const {
        return operations[static_cast<std::size_t>(operation)];
    }
};

} // namespace tallyroom::sql
