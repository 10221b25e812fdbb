#include "store/sqlite/SqliteFunctions.h"

#include "common/DateParser.h"
#include "common/TextOrder.h"
#include "common/Variant.h"
#include "store/sql/LikePattern.h"
#include "store/sqlite/SqliteErrors.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <sqlite3.h>
#include <string>
#include <string_view>

namespace tallyroom {

namespace {

QString textOf(sqlite3_value* value) {
    const unsigned char* text = sqlite3_value_text(value);
    return QString::fromUtf8(reinterpret_cast<const char*>(text), sqlite3_value_bytes(value));
}

void returnText(sqlite3_context* context, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    sqlite3_result_text64(context, bytes.constData(), static_cast<sqlite3_uint64>(bytes.size()),
                          SQLITE_TRANSIENT, SQLITE_UTF8);
}

bool isNull(sqlite3_value* value) {
    return sqlite3_value_type(value) == SQLITE_NULL;
}

// The functions leave their result Null unless they set one.

void toWholeNumber(sqlite3_context* context, int, sqlite3_value** values) {
    if (isNull(*values))
        return;
    const double rounded = std::nearbyint(sqlite3_value_double(*values));
    if (rounded >= std::numeric_limits<int>::min() && rounded <= std::numeric_limits<int>::max())
        sqlite3_result_int(context, static_cast<int>(rounded));
}

void textToNumber(sqlite3_context* context, int, sqlite3_value** values) {
    if (const auto number = parseNumber(textOf(*values)))
        sqlite3_result_double(context, *number);
}

void numberToText(sqlite3_context* context, int, sqlite3_value** values) {
    if (!isNull(*values))
        returnText(context, numberText(sqlite3_value_double(*values)));
}

void dateToText(sqlite3_context* context, int, sqlite3_value** values) {
    if (const auto date = Dates::fromIso(textOf(*values)))
        returnText(context, Dates::toText(*date));
}

void textToDate(sqlite3_context* context, int, sqlite3_value** values) {
    if (const auto date = Dates::parse(textOf(*values)))
        returnText(context, Dates::toIso(*date));
}

void dateToSerial(sqlite3_context* context, int, sqlite3_value** values) {
    if (const auto date = Dates::fromIso(textOf(*values)))
        sqlite3_result_double(context, date->serial);
}

void serialToDate(sqlite3_context* context, int, sqlite3_value** values) {
    const Date date{sqlite3_value_double(*values)};
    if (!isNull(*values) && Dates::isInRange(date))
        returnText(context, Dates::toIso(date));
}

void floorOf(sqlite3_context* context, int, sqlite3_value** values) {
    if (!isNull(*values))
        sqlite3_result_double(context, std::floor(sqlite3_value_double(*values)));
}

void upperCase(sqlite3_context* context, int, sqlite3_value** values) {
    if (!isNull(*values))
        returnText(context, textOf(*values).toUpper());
}

void lowerCase(sqlite3_context* context, int, sqlite3_value** values) {
    if (!isNull(*values))
        returnText(context, textOf(*values).toLower());
}

// By characters, as the engine itself counts them.
void rightPart(sqlite3_context* context, int, sqlite3_value** values) {
    if (isNull(values[0]) || isNull(values[1]))
        return;
    const std::u32string text = textOf(values[0]).toStdU32String();
    const auto count =
        static_cast<std::size_t>(std::max(sqlite3_value_int64(values[1]), sqlite3_int64{}));
    returnText(context,
               QString::fromStdU32String(text.substr(text.size() - std::min(count, text.size()))));
}

// A Null joins as an empty text, but two of them stay Null.
void concatenate(sqlite3_context* context, int, sqlite3_value** values) {
    if (!isNull(values[0]) || !isNull(values[1]))
        returnText(context, textOf(values[0]) + textOf(values[1]));
}

void like(sqlite3_context* context, int, sqlite3_value** values) {
    if (!isNull(values[0]) && !isNull(values[1]))
        sqlite3_result_int(context, matchesLike(textOf(values[0]), textOf(values[1])) ? 1 : 0);
}

// Whatever is the same as a text begins with its part before the first character outside ASCII and
// goes on with such a character: it lies between these two in the order of the files' indexes. A
// text of ASCII is both of them itself.
void returnBound(sqlite3_context* context, sqlite3_value* value, const char* ending) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    const char* end = text + sqlite3_value_bytes(value);
    const char* other =
        std::find_if(text, end, [](char c) { return static_cast<unsigned char>(c) > 0x7F; });
    if (other == end)
        return sqlite3_result_value(context, value);
    const std::string bound = std::string(text, other) + ending;
    sqlite3_result_text64(context, bound.data(), bound.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void lowestSame(sqlite3_context* context, int, sqlite3_value** values) {
    returnBound(context, *values, "");
}

void highestSame(sqlite3_context* context, int, sqlite3_value** values) {
    returnBound(context, *values, "\xF4\x8F\xBF\xBF"); // the last character
}

// Of a text with more spellings than can be listed, those that people use.
QStringList usedSpellings(const QString& text) {
    QStringList all = TextOrder::spellings(text);
    if (!all.isEmpty())
        return all;
    const QString lower = text.toLower();
    return {text, text.toUpper(), lower, lower.left(1).toUpper() + lower.sliced(1)};
}

// A JSON array of the texts that NOCASE must look for; none where the text itself is enough.
void spellings(sqlite3_context* context, int, sqlite3_value** values) {
    const QString text = textOf(*values);
    if (TextOrder::isAscii(text))
        return;
    const QJsonDocument json(QJsonArray::fromStringList(usedSpellings(text)));
    returnText(context, QString::fromUtf8(json.toJson(QJsonDocument::Compact)));
}

// An aggregate over the rows of a scalar subquery, of which there may be one at the most.
struct SingleValue {
    sqlite3_value* value;
};

void singleValueStep(sqlite3_context* context, int, sqlite3_value** values) {
    auto* state =
        static_cast<SingleValue*>(sqlite3_aggregate_context(context, sizeof(SingleValue)));
    if (!state)
        return sqlite3_result_error_nomem(context);
    if (state->value)
        return sqlite3_result_error(context, moreThanOneRowMark, -1);
    state->value = sqlite3_value_dup(*values);
}

void singleValueFinal(sqlite3_context* context) {
    const auto* state = static_cast<SingleValue*>(sqlite3_aggregate_context(context, 0));
    if (!state || !state->value)
        return;
    sqlite3_result_value(context, state->value);
    sqlite3_value_free(state->value);
}

struct ScalarFunction {
    const char* name;
    int arguments;
    void (*call)(sqlite3_context*, int, sqlite3_value**);
};

constexpr ScalarFunction scalarFunctions[] = {
    {"tr_long", 1, toWholeNumber},
    {"tr_number", 1, textToNumber},
    {"tr_number_text", 1, numberToText},
    {"tr_date_text", 1, dateToText},
    {"tr_date", 1, textToDate},
    {"tr_serial", 1, dateToSerial},
    {"tr_from_serial", 1, serialToDate},
    {"tr_floor", 1, floorOf},
    {"tr_upper", 1, upperCase},
    {"tr_lower", 1, lowerCase},
    {"tr_right", 2, rightPart},
    {"tr_concat", 2, concatenate},
    {"tr_like", 2, like},
    {"tr_lowest", 1, lowestSame},
    {"tr_highest", 1, highestSame},
    {"tr_spellings", 1, spellings},
};

// Not usable from within the schema of a file that someone else has made.
constexpr int functionFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;

// Blanks at the end of a text do not count in a comparison.
std::string_view withoutTrailingBlanks(const void* text, int length) {
    std::string_view view(static_cast<const char*>(text), static_cast<std::size_t>(length));
    const std::size_t last = view.find_last_not_of(' ');
    return view.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

int compareTrimmed(const void* left, int leftLength, const void* right, int rightLength) {
    const std::string_view a = withoutTrailingBlanks(left, leftLength);
    const std::string_view b = withoutTrailingBlanks(right, rightLength);
    const int order =
        sqlite3_strnicmp(a.data(), b.data(), static_cast<int>(std::min(a.size(), b.size())));
    return order != 0 ? order : static_cast<int>(a.size()) - static_cast<int>(b.size());
}

int lowered(unsigned char letter) {
    return letter >= 'A' && letter <= 'Z' ? letter + ('a' - 'A') : letter;
}

// The order of the engine's own NOCASE (letters A to Z in either case) but for blanks at the end.
// It takes that name over on our connections; texts that differ in such blanks stand side by side
// in either order, so that the files' indexes serve both. Totals call it for every row of the
// history: two texts differ at once or not at all in most cases, and only where a blank or the end
// of a text decides does it matter what the rest is.
int compareTexts(void*, int leftLength, const void* left, int rightLength, const void* right) {
    const auto* a = static_cast<const unsigned char*>(left);
    const auto* b = static_cast<const unsigned char*>(right);
    const int common = std::min(leftLength, rightLength);
    int at = 0;
    while (at < common && a[at] != 0 && (a[at] == b[at] || lowered(a[at]) == lowered(b[at])))
        ++at;
    if (at == leftLength && at == rightLength)
        return 0;
    if (at < common && a[at] > ' ' && b[at] > ' ')
        return lowered(a[at]) - lowered(b[at]);
    return compareTrimmed(left, leftLength, right, rightLength);
}

// Codes are mostly compared with themselves.
int collate(void*, int leftLength, const void* left, int rightLength, const void* right) {
    const std::string_view a(static_cast<const char*>(left), static_cast<std::size_t>(leftLength));
    const std::string_view b(static_cast<const char*>(right),
                             static_cast<std::size_t>(rightLength));
    return a == b ? 0 : TextOrder::compare(QUtf8StringView(a), QUtf8StringView(b));
}

} // namespace

bool registerSqliteFunctions(sqlite3* connection) {
    TextOrder::compare(u"a", u"b"); // raises here what nothing may raise through the engine
    int result = sqlite3_create_function_v2(connection, "tr_single", 1, functionFlags, nullptr,
                                            nullptr, singleValueStep, singleValueFinal, nullptr);
    for (const ScalarFunction& function : scalarFunctions) {
        if (result == SQLITE_OK)
            result = sqlite3_create_function_v2(connection, function.name, function.arguments,
                                                functionFlags, nullptr, function.call, nullptr,
                                                nullptr, nullptr);
    }
    if (result == SQLITE_OK)
        result = sqlite3_create_collation_v2(connection, "NOCASE", SQLITE_UTF8, nullptr,
                                             compareTexts, nullptr);
    if (result == SQLITE_OK)
        result = sqlite3_create_collation_v2(connection, "TR_TEXT", SQLITE_UTF8, nullptr, collate,
                                             nullptr);
    return result == SQLITE_OK;
}

} // namespace tallyroom
