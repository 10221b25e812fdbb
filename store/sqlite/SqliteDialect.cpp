// SQLite. Functions that begin with "tr_" are those of SqliteFunctions.
#include "store/sqlite/SqliteDialect.h"

namespace tallyroom {

namespace {

using sql::Operation;

constexpr sql::OperationTemplate templates[] = {
    {Operation::Between, u"($1 BETWEEN min($2, $3) AND max($2, $3))"},
    {Operation::SameText, u"($1 COLLATE NOCASE BETWEEN tr_lowest($2) AND tr_highest($2) AND "
                          u"$1 COLLATE TR_TEXT = $2)"},
    {Operation::Like, u"tr_like($1, $2)"},
    {Operation::Divide, u"(CAST($1 AS REAL) / $2)"},
    {Operation::Modulo, u"(tr_long($1) % tr_long($2))"},
    {Operation::Concat, u"tr_concat($1, $2)"},
    {Operation::IfNull, u"ifnull($1, $2)"},
    {Operation::DayOf, u"(substr($1, 1, 10) || ' 00:00:00')"},
    {Operation::Now, u"datetime('now', 'localtime')"},
    {Operation::Today, u"(date('now', 'localtime') || ' 00:00:00')"},
    {Operation::Trim, u"trim($1)"},
    {Operation::TrimLeft, u"ltrim($1)"},
    {Operation::TrimRight, u"rtrim($1)"},
    {Operation::UpperCase, u"tr_upper($1)"},
    {Operation::LowerCase, u"tr_lower($1)"},
    {Operation::Left, u"substr($1, 1, min(max($2, 0), 999999999))"},
    {Operation::Right, u"tr_right($1, $2)"},
    {Operation::Middle,
     u"substr($1, min(max($2, -999999999), 999999999), min(max($3, 0), 999999999))"},
    {Operation::MiddleToEnd, u"substr($1, min(max($2, -999999999), 999999999))"},
    {Operation::Length, u"length($1)"},
    {Operation::Absolute, u"abs($1)"},
    {Operation::Floor, u"tr_floor($1)"},
    {Operation::Sum, u"sum($1)"},
    {Operation::FirstText, u"min($1 COLLATE NOCASE)"},
    {Operation::LastText, u"max($1 COLLATE NOCASE)"},
    {Operation::FirstSpelling, u"min($1 COLLATE NOCASE)"},
    {Operation::Average, u"avg($1)"},
    {Operation::AnySpelling, u"$1"}, // the first one met
    {Operation::ConditionAsNumber, u"(- $1)"},
    {Operation::RoundToLong, u"tr_long($1)"},
    {Operation::NumberToText, u"tr_number_text($1)"},
    {Operation::DateToText, u"tr_date_text($1)"},
    {Operation::TextToNumber, u"tr_number($1)"},
    {Operation::TextToDate, u"tr_date($1)"},
    {Operation::DateToSerial, u"tr_serial($1)"},
    {Operation::SerialToDate, u"tr_from_serial($1)"},
    {Operation::FitText, u"substr($1, 1, $2)"},
    {Operation::CaseBlind, u"$1 COLLATE NOCASE"},
    {Operation::Collated, u"$1 COLLATE TR_TEXT"},
    {Operation::AsIndexed, u"$1 COLLATE NOCASE"},
};

constexpr sql::Dialect dialect = {
    .nameQuote = u'"',
    .textQuote = u'\'',
    .nullLiteral = u"NULL",
    .trueLiteral = u"-1",
    .falseLiteral = u"0",
    .dateLiteral = u"$1",
    .wholeLiteral = u"$1",
    .realLiteral = u"$1",
    .textLiteral = u"$1",
    .keyColumn = u"_rowid_",
    .hasKey = u"$1 = $2",
    .parameter = u"?$1",
    .ascending = u"$1 ASC",
    .descending = u"$1 DESC",
    .distinct = sql::Dialect::Distinct::Values,
    .deleteRows = u"DELETE FROM $1 AS $2$3",
    .insertRows = u"INSERT OR IGNORE INTO $1 ($2) $3",
    .updateRows = u"UPDATE OR IGNORE $1 AS $2 SET $3$4",
    .insertRow = u"INSERT INTO $1 ($2) VALUES ($3)",
    .updateRow = u"UPDATE $1 SET $2 WHERE $3 = $4",
    .deleteRow = u"DELETE FROM $1 WHERE $2 = $3",
    .dropTable = u"DROP TABLE $1",
    .tableWithAlias = u"$1 AS $2",
    .singleValue = u"(SELECT tr_single(\"v\") FROM ($1))",
    .inSet = u"($1 IN ($2))",
    .comparesFewOneByOne = true,
    .inTexts = u"($1 COLLATE NOCASE IN (SELECT ifnull(value, \"v\") FROM ($2) LEFT JOIN "
               u"json_each(tr_spellings(\"v\"))))",
    .inCaseBlindTexts = u"($1 IN (SELECT value FROM json_each($2)))",
    .inCollatedTexts = u"($1 IN (SELECT value FROM json_each($2)))",
    .operations = sql::allTemplates(templates),
};

} // namespace

const sql::Dialect& sqliteDialect() {
    return dialect;
}

} // namespace tallyroom
