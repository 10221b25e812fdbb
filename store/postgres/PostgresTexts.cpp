#include "store/postgres/PostgresTexts.h"

#include "common/TextOrder.h"

namespace tallyroom {

namespace {

using Mapping = QString (*)(const QString& character);

QString upperCase(const QString& character) {
    return character.toUpper();
}

QString lowerCase(const QString& character) {
    return character.toLower();
}

QString folded(const QString& character) {
    return TextOrder::folded(character);
}

// Like folds the units of UTF-16.
QString foldedForLike(const QString& character) {
    return character.size() == 1 ? QString(character.front().toCaseFolded()) : character;
}

QString call(const char* function, const QString& arguments) {
    return QStringLiteral("pg_catalog.%1(%2)").arg(QString::fromLatin1(function), arguments);
}

// "translate" goes through its list for every character: texts in one script have a shorter one.
struct Script {
    char32_t first;
    char32_t last;
};
constexpr Script scripts[] = {
    {0x0080, 0x017F},   // Latin
    {0x0370, 0x03FF},   // Greek
    {0x0400, 0x04FF},   // Cyrillic
    {0x0080, 0x10FFFF}, // all
};

// The expression that maps the characters of x in a script.
QString mapped(Mapping mapping, Script script, QString x) {
    QString from;
    QString to;
    QList<std::pair<QString, QString>> longer;
    for (char32_t code = script.first; code <= script.last; ++code) {
        if (QChar::isSurrogate(code))
            continue;
        const QString character = QString::fromUcs4(&code, 1);
        const QString other = mapping(character);
        if (other.toUcs4().size() > 1) {
            longer.emplace_back(character, other);
        } else if (other != character) {
            from += character;
            to += other;
        }
    }
    x = call("translate", QStringLiteral("%1, '%2', '%3'").arg(x, from, to));
    for (const auto& [character, other] : std::as_const(longer))
        x = call("replace", QStringLiteral("%1, '%2', '%3'").arg(x, character, other));
    return x;
}

QString escaped(char32_t code) {
    return QStringLiteral("\\\\U%1").arg(static_cast<uint>(code), 8, 16, QLatin1Char('0'));
}

// A function for texts that are not wholly of ASCII. It is not to be inlined, since its lists are
// long, and so it is in PL/pgSQL, which reads them once a session. The lists are those of the
// toolkit: a newer Unicode on the server cannot make an index wrong.
QString mappingFunction(const char* name, Mapping mapping, const QString& x) {
    QString choice = QStringLiteral("CASE");
    for (const Script& script : scripts) {
        const QString outside =
            QStringLiteral("E'[^%1-%2%3-%4]'")
                .arg(escaped(1), escaped(0x7F), escaped(script.first), escaped(script.last));
        choice += QStringLiteral("\n    WHEN NOT %1 THEN %2")
                      .arg(call("regexp_like", QStringLiteral("x COLLATE \"C\", ") + outside),
                           mapped(mapping, script, x));
    }
    return QStringLiteral("CREATE OR REPLACE FUNCTION tallyroom.%1(x text) RETURNS text\n"
                          "LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$ BEGIN\n"
                          "RETURN %2 END;\nEND $$")
        .arg(QString::fromLatin1(name), choice);
}

QStringList mappingFunctions() {
    const QString upper = call("upper", QStringLiteral("x COLLATE \"C\""));
    const QString lower = call("lower", QStringLiteral("x COLLATE \"C\""));
    return {mappingFunction("tr_upper_letters", upperCase, upper),
            mappingFunction("tr_lower_letters", lowerCase, lower),
            mappingFunction("tr_folded_letters", folded, call("rtrim", lower)),
            mappingFunction("tr_like_letters", foldedForLike, lower)};
}

// A text of as many bytes as characters is of ASCII.
constexpr const char* caseFunctions[] = {
    // The key of texts for which only A to Z have a case and blanks at the end do not count. It is
    // ordered by bytes.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_nocase(x text) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE
RETURN lower(rtrim(x) COLLATE "C"))",

    // The key of the texts that count as the same. It is ordered by tr_order.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_same(x text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN octet_length(x) = char_length(x) THEN lower(rtrim(x) COLLATE "C")
    ELSE tallyroom.tr_folded_letters(x) END)",

    // Of the texts of a JSON array.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_nocase_all(texts jsonb) RETURNS text[]
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN ARRAY(SELECT tallyroom.tr_nocase(x) FROM jsonb_array_elements_text(texts) AS x))",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_same_all(texts jsonb) RETURNS text[]
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN ARRAY(SELECT tallyroom.tr_same(x) FROM jsonb_array_elements_text(texts) AS x))",

    R"(CREATE COLLATION IF NOT EXISTS tallyroom.tr_order (
    provider = icu, locale = 'und-u-ks-level2', deterministic = true))",

    // The tr_nocase of whatever is the same as a text lies between these two: it begins with the
    // text's part before the first character outside ASCII and goes on with such a character.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_lowest(x text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN octet_length(x) = char_length(x) THEN lower(rtrim(x) COLLATE "C")
    ELSE lower(substring(x COLLATE "C" from E'^[\\u0001-\\u007f]*')) || chr(128) END)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_highest(x text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN octet_length(x) = char_length(x) THEN lower(rtrim(x) COLLATE "C")
    ELSE lower(substring(x COLLATE "C" from E'^[\\u0001-\\u007f]*')) || chr(1114111) END)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_upper(x text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN octet_length(x) = char_length(x) THEN upper(x COLLATE "C")
    ELSE tallyroom.tr_upper_letters(x) END)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_lower(x text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN octet_length(x) = char_length(x) THEN lower(x COLLATE "C")
    ELSE tallyroom.tr_lower_letters(x) END)",

    // Of texts that are the same but for the case of A to Z, the first one met stays.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_lesser(kept text, met text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$ BEGIN
    RETURN CASE WHEN pg_catalog.text_lt(tallyroom.tr_nocase(met) COLLATE "C",
        tallyroom.tr_nocase(kept)) THEN met ELSE kept END;
END $$)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_greater(kept text, met text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$ BEGIN
    RETURN CASE WHEN pg_catalog.text_gt(tallyroom.tr_nocase(met) COLLATE "C",
        tallyroom.tr_nocase(kept)) THEN met ELSE kept END;
END $$)",

    R"(CREATE OR REPLACE AGGREGATE tallyroom.tr_min(text) (
    sfunc = tallyroom.tr_lesser, stype = text, parallel = safe))",

    R"(CREATE OR REPLACE AGGREGATE tallyroom.tr_max(text) (
    sfunc = tallyroom.tr_greater, stype = text, parallel = safe))",
};

constexpr const char* partFunctions[] = {
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_concat(a text, b text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN coalesce(a || coalesce(b, ''), b))",

    // A count of characters as the server's own functions take it.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_count(n bigint) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN n > 2147483647 THEN 2147483647 WHEN n > 0 THEN n::integer
    WHEN n <= 0 THEN 0 END)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_left(x text, n bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN left(x, tallyroom.tr_count(n)))",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_right(x text, n bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN right(x, tallyroom.tr_count(n)))",

    // A start below zero counts from the end, and zero is the place before the first character.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_start(x text, start bigint) RETURNS integer
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN start >= 0 THEN tallyroom.tr_count(start)
    WHEN start < 0 THEN char_length(x) + 1 - tallyroom.tr_count(- start) END)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_middle(x text, start bigint, n bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN substr(x, tallyroom.tr_start(x, start), tallyroom.tr_count(n)))",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_middle(x text, start bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN substr(x, tallyroom.tr_start(x, start)))",
};

// A pattern becomes a regular expression, once a statement where it is a literal.
constexpr const char* likeFunctions[] = {
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_like_text(x text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN octet_length(x) = char_length(x) THEN lower(x COLLATE "C")
    ELSE tallyroom.tr_like_letters(x) END)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_like_escaped(c text) RETURNS text
LANGUAGE sql IMMUTABLE STRICT PARALLEL SAFE
RETURN E'\\U' || lpad(to_hex(ascii(c)), 8, '0'))",

    // What stands between the brackets. "$." matches nothing.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_like_set(characters text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE SET search_path = pg_catalog, pg_temp AS $$
DECLARE
    negated boolean := starts_with(characters, '!');
    at integer := CASE WHEN negated THEN 2 ELSE 1 END;
    low text;
    high text;
    ranges text := '';
BEGIN
    WHILE at <= length(characters) LOOP
        low := substr(characters, at, 1);
        high := low;
        IF at + 2 <= length(characters) AND substr(characters, at + 1, 1) = '-' THEN
            high := substr(characters, at + 2, 1);
            at := at + 2;
        END IF;
        at := at + 1;
        IF ascii(low) <= ascii(high) THEN
            ranges := ranges || tallyroom.tr_like_escaped(low) || '-'
                || tallyroom.tr_like_escaped(high);
        END IF;
    END LOOP;
    RETURN CASE WHEN ranges <> '' THEN CASE WHEN negated THEN '[^' ELSE '[' END || ranges || ']'
        WHEN negated THEN '.' ELSE '$.' END;
END $$)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_like_regex(pattern text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE SET search_path = pg_catalog, pg_temp AS $$
DECLARE
    rest text := tallyroom.tr_like_text(pattern);
    taken integer;
    regex text := '^';
BEGIN
    WHILE rest <> '' LOOP
        taken := 1;
        IF left(rest, 1) = '[' THEN
            taken := strpos(rest, ']');
            IF taken = 0 THEN
                RETURN '$.';
            END IF;
        END IF;
        regex := regex || CASE left(rest, 1)
            WHEN '*' THEN '.*'
            WHEN '?' THEN '.'
            WHEN '#' THEN '[0-9]'
            WHEN '[' THEN tallyroom.tr_like_set(substr(rest, 2, taken - 2))
            ELSE tallyroom.tr_like_escaped(rest) END;
        rest := substr(rest, taken + 1);
    END LOOP;
    RETURN regex || '$';
END $$)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_like(x text, pattern text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN tallyroom.tr_like_text(x) COLLATE "C" ~ tallyroom.tr_like_regex(pattern))",
};

} // namespace

QStringList postgresTexts() {
    QStringList statements = mappingFunctions();
    const auto add = [&statements](const auto& functions) {
        for (const char* function : functions)
            statements << QString::fromLatin1(function);
    };
    add(caseFunctions);
    add(partFunctions);
    add(likeFunctions);
    return statements;
}

} // namespace tallyroom
