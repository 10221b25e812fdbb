// PostgreSQL. Functions of the schema "tallyroom" are those of PostgresFunctions. A text is
// compared by a key that stands for it: the engine has no collation with the files' rules. Of
// spellings that are the same, capitals come first, for rows are met in any order.
#include "store/postgres/PostgresDialect.h"

namespace tallyroom {

namespace {

using sql::Operation;

constexpr sql::OperationTemplate templates[] = {
    {Operation::Between, u"($1 BETWEEN $2 AND $3 OR $1 BETWEEN $3 AND $2)"},
    {Operation::SameText,
     u"(tallyroom.tr_nocase($1) COLLATE \"C\" BETWEEN tallyroom.tr_lowest($2) AND "
     u"tallyroom.tr_highest($2) AND "
     u"tallyroom.tr_same($1) = tallyroom.tr_same($2))"},
    {Operation::Like, u"tallyroom.tr_like($1, $2)"},
    {Operation::Divide, u"($1::double precision / nullif($2::double precision, 0))"},
    {Operation::Modulo, u"(tallyroom.tr_long($1) % nullif(tallyroom.tr_long($2), 0))"},
    {Operation::Concat, u"tallyroom.tr_concat($1, $2)"},
    {Operation::IfNull, u"coalesce($1, $2)"},
    {Operation::DayOf, u"date_trunc('day', $1)"},
    {Operation::Now, u"date_trunc('second', statement_timestamp()::timestamp)"},
    {Operation::Today, u"date_trunc('day', statement_timestamp()::timestamp)"},
    {Operation::Trim, u"btrim($1)"},
    {Operation::TrimLeft, u"ltrim($1)"},
    {Operation::TrimRight, u"rtrim($1)"},
    {Operation::UpperCase, u"tallyroom.tr_upper($1)"},
    {Operation::LowerCase, u"tallyroom.tr_lower($1)"},
    {Operation::Left, u"tallyroom.tr_left($1, $2)"},
    {Operation::Right, u"tallyroom.tr_right($1, $2)"},
    {Operation::Middle, u"tallyroom.tr_middle($1, $2, $3)"},
    {Operation::MiddleToEnd, u"tallyroom.tr_middle($1, $2)"},
    {Operation::Length, u"length($1)::bigint"},
    {Operation::Absolute, u"abs($1)"},
    {Operation::Floor, u"floor($1)"},
    {Operation::Sum, u"sum($1)::double precision"},
    {Operation::FirstText, u"tallyroom.tr_min($1 ORDER BY $1 COLLATE \"C\")"},
    {Operation::LastText, u"tallyroom.tr_max($1 ORDER BY $1 COLLATE \"C\")"},
    {Operation::FirstSpelling, u"min($1 COLLATE \"C\")"},
    {Operation::Average, u"avg($1)::double precision"},
    {Operation::AnySpelling, u"min($1 COLLATE \"C\")"},
    {Operation::ConditionAsNumber, u"(- ($1)::int)"},
    {Operation::RoundToLong, u"tallyroom.tr_long($1)"},
    {Operation::NumberToText, u"tallyroom.tr_number_text($1)"},
    {Operation::DateToText, u"tallyroom.tr_date_text($1)"},
    {Operation::TextToNumber, u"tallyroom.tr_number($1)"},
    {Operation::TextToDate, u"tallyroom.tr_date($1)"},
    {Operation::DateToSerial, u"tallyroom.tr_serial($1)"},
    {Operation::SerialToDate, u"tallyroom.tr_from_serial($1)"},
    {Operation::FitText, u"left($1, ($2)::int)"},
    {Operation::CaseBlind, u"(tallyroom.tr_nocase($1) COLLATE \"C\")"},
    {Operation::Collated, u"(tallyroom.tr_same($1) COLLATE tallyroom.tr_order)"},
    {Operation::AsIndexed, u"$1"},
};

constexpr sql::Dialect dialect = {
    .nameQuote = u'"',
    .textQuote = u'\'',
    .nullLiteral = u"NULL",
    .trueLiteral = u"(-1)::int",
    .falseLiteral = u"(0)::int",
    .dateLiteral = u"($1)::timestamp",
    .wholeLiteral = u"($1)::bigint",
    .realLiteral = u"($1)::double precision",
    .textLiteral = u"($1)::text",
    .keyColumn = u"tr_key",
    .hasKey = u"$1 = ANY ($2::bigint[])",
    .parameter = u"$$$1",
    .ascending = u"$1 ASC NULLS FIRST",
    .descending = u"$1 DESC NULLS LAST",
    .distinct = sql::Dialect::Distinct::OnKeys,
    .deleteRows = u"DELETE FROM $1 AS $2$3",
    .insertRows = u"INSERT INTO $1 ($2) $3 ON CONFLICT DO NOTHING",
    .updateRows = u"UPDATE $1 AS $2 SET $3$4",
    .insertRow = u"INSERT INTO $1 ($2) VALUES ($3) RETURNING tr_key",
    .updateRow = u"UPDATE $1 SET $2 WHERE $3 = $4",
    .deleteRow = u"DELETE FROM $1 WHERE $2 = $3",
    .dropTable = u"DROP TABLE $1",
    .tableWithAlias = u"$1 AS $2",
    .singleValue = u"($1)", // the engine itself refuses a second row
    .inSet = u"($1 IN ($2))",
    .comparesFewOneByOne = false,
    .inTexts = u"(tallyroom.tr_same($1) IN (SELECT tallyroom.tr_same(\"v\") FROM ($2) AS texts))",
    .inCaseBlindTexts = u"($1 = ANY (tallyroom.tr_nocase_all($2)))",
    .inCollatedTexts = u"($1 = ANY (tallyroom.tr_same_all($2)))",
    .operations = sql::allTemplates(templates),
};

} // namespace

const sql::Dialect& postgresDialect() {
    return dialect;
}

} // namespace tallyroom
