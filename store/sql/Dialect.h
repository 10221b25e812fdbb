// An engine's way of writing statements, as data. A further engine is a further constant.
#pragma once

#include "store/sql/Operation.h"

#include <QChar>
#include <algorithm>
#include <array>
#include <iterator>

namespace tallyroom::sql {

// In the templates $1 to $9 stand for the parts and $$ for a dollar sign; every template is a whole
// that needs no further parentheses.
struct Dialect {
    QChar nameQuote;
    QChar textQuote;
    const char16_t* nullLiteral;
    const char16_t* trueLiteral;
    const char16_t* falseLiteral;
    // $1 may be a parameter as well and, where the type of a Null has to be told, the null literal.
    const char16_t* dateLiteral;  // $1 is a text: YYYY-MM-DD HH:MM:SS
    const char16_t* wholeLiteral; // $1 are digits ...
    const char16_t* realLiteral;  // ... with a point or an exponent
    const char16_t* textLiteral;
    const char16_t* keyColumn;  // by which a row is found again
    const char16_t* hasKey;     // $1 a key, $2 the parameter of the keys that are wanted
    const char16_t* parameter;  // the $1st value that is bound to a statement
    const char16_t* ascending;  // Nulls come first
    const char16_t* descending; // Nulls come last
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
    // Whether a column is compared with a few values one by one, which may be quicker than a set.
    bool comparesFewOneByOne;
    const char16_t* inTexts; // $1 text, $2 a query of one column "v", in any spelling
    // $1 a text as CaseBlind and Collated give it, $2 a JSON array of texts as they are.
    const char16_t* inCaseBlindTexts;
    const char16_t* inCollatedTexts;
    std::array<const char16_t*, operationCount> operations;

    const char16_t* operation(Operation operation) const {
        return operations[static_cast<std::size_t>(operation)];
    }
};

struct OperationTemplate {
    Operation operation;
    const char16_t* text;
};

// How every engine writes these.
inline constexpr OperationTemplate standardTemplates[] = {
    {Operation::And, u"($1 AND $2)"},
    {Operation::Or, u"($1 OR $2)"},
    {Operation::Not, u"(NOT $1)"},
    {Operation::Equal, u"($1 = $2)"},
    {Operation::NotEqual, u"($1 <> $2)"},
    {Operation::Less, u"($1 < $2)"},
    {Operation::LessOrEqual, u"($1 <= $2)"},
    {Operation::Greater, u"($1 > $2)"},
    {Operation::GreaterOrEqual, u"($1 >= $2)"},
    {Operation::BetweenOrdered, u"($1 BETWEEN $2 AND $3)"},
    {Operation::IsNull, u"($1 IS NULL)"},
    {Operation::IsNotNull, u"($1 IS NOT NULL)"},
    {Operation::NumberAsCondition, u"($1 <> 0)"},
    {Operation::Negate, u"(- $1)"},
    {Operation::Add, u"($1 + $2)"},
    {Operation::Subtract, u"($1 - $2)"},
    {Operation::Multiply, u"($1 * $2)"},
    {Operation::Join, u"($1 || $2)"},
    {Operation::If, u"(CASE WHEN $1 THEN $2 ELSE $3 END)"},
    {Operation::Count, u"count($1)"},
    {Operation::CountAll, u"count(*)"},
    {Operation::Minimum, u"min($1)"},
    {Operation::Maximum, u"max($1)"},
};

// The standard templates and an engine's own, by operation. Does not compile unless each operation
// has one template.
template<std::size_t count>
consteval std::array<const char16_t*, operationCount>
allTemplates(const OperationTemplate (&own)[count]) {
    static_assert(std::size(standardTemplates) + count == operationCount);
    std::array<const char16_t*, operationCount> result{};
    const auto take = [&result](const OperationTemplate& entry) {
        const char16_t*& text = result[static_cast<std::size_t>(entry.operation)];
        text = text ? throw "two templates for an operation" : entry.text;
    };
    std::ranges::for_each(standardTemplates, take);
    std::ranges::for_each(own, take);
    return result;
}

} // namespace tallyroom::sql
