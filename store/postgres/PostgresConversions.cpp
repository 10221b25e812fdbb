#include "store/postgres/PostgresConversions.h"

namespace tallyroom {

namespace {

constexpr const char* numberFunctions[] = {
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_long(x double precision) RETURNS bigint
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN round(x) BETWEEN -2147483648 AND 2147483647 THEN round(x)::bigint END)",

    // The server's decimal numbers take 15 digits of a double one, as many as are shown.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_digits(x numeric) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE SET search_path = pg_catalog, pg_temp AS $$
BEGIN
    IF abs(x) >= 1e-4 AND abs(x) < 1e15 THEN
        RETURN trim_scale(x)::text;
    ELSIF abs(x) < numeric 'Infinity' THEN
        RETURN upper(regexp_replace(ltrim(to_char(x, '9.99999999999999EEEE')), '[.]?0*e', 'e'));
    END IF;
    RETURN CASE WHEN x = numeric 'NaN' THEN 'NAN' WHEN x > 0 THEN 'INF' ELSE '-INF' END;
END $$)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_number_text(x double precision) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN abs(x) < 1e15 AND x = trunc(x) THEN x::bigint::text
    ELSE tallyroom.tr_digits(x::numeric) END)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_number_text(x bigint) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN abs(x::double precision) < 1e15 THEN x::text
    ELSE tallyroom.tr_digits(x::double precision::numeric) END)",

    // The digits may be grouped by thousands, and a minus be the typographical one. The parts are
    // the sign, the digits before and after the point, and the power of ten.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_number(x text) RETURNS double precision
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE SET search_path = pg_catalog, pg_temp AS $$
DECLARE
    number text COLLATE "C" := translate(btrim(x, '{spaces}'), '{minus}', '-');
    parts text[] := regexp_match(number, '^([+-]?)([0-9]+|[0-9]{1,3}(?:,[0-9]{3})+|(?=[.][0-9]))'
        '(?:[.]([0-9]*))?(?:[eE]([+-]?[0-9]+))?$');
    whole text := ltrim(replace(parts[2], ',', ''), '0');
    fraction text := coalesce(parts[3], '');
    magnitude numeric;
BEGIN
    IF parts IS NULL OR length(number) > 1000 THEN
        RETURN NULL;
    ELSIF ltrim(whole || fraction, '0') = '' THEN
        RETURN (parts[1] || '0')::double precision;
    END IF;
    magnitude := coalesce(parts[4], '0')::numeric + CASE WHEN whole <> '' THEN length(whole)
        ELSE length(ltrim(fraction, '0')) - length(fraction) END;
    IF magnitude NOT BETWEEN -323 AND 309 THEN
        RETURN NULL;
    END IF;
    number := replace(number, ',', '');
    IF abs(number::numeric) NOT BETWEEN 2.4703282292062328e-324 AND 1.7976931348623158079e308 THEN
        RETURN NULL;
    END IF;
    RETURN number::double precision;
END $$)",
};

constexpr const char* dateFunctions[] = {
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_clock_text(x time) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN ((date_part('hour', x)::integer + 11) % 12 + 1)::text
    || ':' || lpad(date_part('minute', x)::integer::text, 2, '0')
    || ':' || lpad(trunc(date_part('second', x))::integer::text, 2, '0')
    || CASE WHEN x < time '12:00' THEN ' AM' ELSE ' PM' END)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_day_text(x date) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN date_part('month', x)::integer::text || '/' || date_part('day', x)::integer::text
    || '/' || date_part('year', x)::integer::text)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_moment_text(x timestamp) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN x < timestamp '0100-01-01' OR x >= timestamp '10000-01-01' THEN NULL
    WHEN x::date = date '1899-12-30' THEN tallyroom.tr_clock_text(x::time)
    WHEN x::time = time '00:00' THEN tallyroom.tr_day_text(x::date)
    ELSE tallyroom.tr_day_text(x::date) || ' ' || tallyroom.tr_clock_text(x::time) END)",

    // In PL/pgSQL, since it is long; read into every statement it would take longer to plan.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_date_text(x timestamp) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$ BEGIN
    RETURN tallyroom.tr_moment_text(x);
END $$)",

    // Before day zero, too, the time of day counts away from it.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_serial(x timestamp) RETURNS double precision
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN x >= timestamp '1899-12-30' AND x < timestamp '10000-01-01'
    THEN (x::date - date '1899-12-30') + trunc(date_part('epoch', x::time)) / 86400
    WHEN x >= timestamp '0100-01-01' AND x < timestamp '1899-12-30'
    THEN (x::date - date '1899-12-30') - trunc(date_part('epoch', x::time)) / 86400 END)",

    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_moment(serial double precision) RETURNS timestamp
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE WHEN serial > -657435 AND serial < 2958466 - 0.5::double precision / 86400
    THEN date '1899-12-30' + trunc(serial)::integer
        + make_interval(secs => floor(abs(serial - trunc(serial)) * 86400 + 0.5)) END)",

    // In PL/pgSQL, since it is given sums, which SQL would have to compute at each place of x.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_from_serial(x double precision) RETURNS timestamp
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$ BEGIN
    RETURN tallyroom.tr_moment(x);
END $$)",

    // A year of two digits lies from 1930 to 2029. Null for a day that no calendar has.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_day(year integer, month integer, day integer)
RETURNS date
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE SET search_path = pg_catalog, pg_temp AS $$
DECLARE
    result date;
BEGIN
    IF year > 9999 OR month NOT BETWEEN 1 AND 12 OR day NOT BETWEEN 1 AND 31 THEN
        RETURN NULL;
    END IF;
    year := year + CASE WHEN year < 30 THEN 2000 WHEN year < 100 THEN 1900 ELSE 0 END;
    result := make_date(year, month, 1) + (day - 1);
    RETURN CASE WHEN date_part('month', result) = month THEN result END;
END $$)",

    // What is left of a date text without the time of day: up to three words, one of which may be a
    // month's name. A number of more than four digits is no part of a date.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_read_day(x text) RETURNS date
LANGUAGE plpgsql STABLE STRICT PARALLEL SAFE SET search_path = pg_catalog, pg_temp AS $$
DECLARE
    months CONSTANT text[] := ARRAY['january', 'february', 'march', 'april', 'may', 'june', 'july',
        'august', 'september', 'october', 'november', 'december'];
    this_year CONSTANT integer := date_part('year', current_date);
    word text COLLATE "C";
    month integer;
    n integer[] := ARRAY[]::integer[];
BEGIN
    IF x COLLATE "C" !~ ('^[a-zA-Z0-9]+(?:[[:space:]]*[/,-][[:space:]]*[a-zA-Z0-9]+'
            '|[[:space:]]+[a-zA-Z0-9]+){0,2}$') THEN
        RETURN NULL;
    END IF;
    FOR word IN SELECT part[1]
            FROM regexp_matches(lower(x COLLATE "C"), '[0-9]+|[a-z]+', 'g') AS part LOOP
        IF word < 'a' AND length(ltrim(word, '0')) <= 4 THEN
            n := n || right(word, 4)::integer;
        ELSIF month IS NOT NULL THEN
            RETURN NULL;
        ELSE
            SELECT number INTO month FROM unnest(months) WITH ORDINALITY AS names(name, number)
                WHERE word IN (name, left(name, 3));
            IF month IS NULL THEN
                RETURN NULL;
            END IF;
        END IF;
    END LOOP;
    RETURN CASE
        WHEN month IS NOT NULL AND cardinality(n) = 1 THEN
            coalesce(tallyroom.tr_day(this_year, month, n[1]), tallyroom.tr_day(n[1], month, 1))
        WHEN month IS NOT NULL AND cardinality(n) = 2 THEN
            coalesce(tallyroom.tr_day(n[2], month, n[1]), tallyroom.tr_day(n[1], month, n[2]))
        WHEN month IS NULL AND cardinality(n) = 2 THEN
            coalesce(tallyroom.tr_day(this_year, n[1], n[2]),
                tallyroom.tr_day(this_year, n[2], n[1]),
                tallyroom.tr_day(n[2], n[1], 1), tallyroom.tr_day(n[1], n[2], 1))
        WHEN month IS NULL AND cardinality(n) = 3 THEN
            coalesce(tallyroom.tr_day(n[3], n[1], n[2]), tallyroom.tr_day(n[3], n[2], n[1]),
                tallyroom.tr_day(n[1], n[2], n[3]), tallyroom.tr_day(n[2], n[1], n[3]))
        END;
END $$)",

    // Of a time of day: hour, minute, second and half of the day; or hour and half of the day. Null
    // for one that no clock shows.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_clock(parts text[]) RETURNS interval
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE SET search_path = pg_catalog, pg_temp AS $$
DECLARE
    half text COLLATE "C" := lower(coalesce(parts[4], parts[6]) COLLATE "C");
    hour integer := coalesce(parts[1], parts[5])::integer;
    minute integer := coalesce(parts[2], '0')::integer;
    second integer := coalesce(parts[3], '0')::integer;
BEGIN
    IF hour <= 12 AND half IS NOT NULL THEN
        hour := hour % 12 + CASE WHEN half IN ('p', 'pm') THEN 12 ELSE 0 END;
    END IF;
    RETURN CASE WHEN hour < 24 AND minute < 60 AND second < 60
        THEN make_interval(hours => hour, mins => minute, secs => second) END;
END $$)",

    // A date without a year is one of this year, in the session's time zone.
    R"(CREATE OR REPLACE FUNCTION tallyroom.tr_date(x text) RETURNS timestamp
LANGUAGE plpgsql STABLE STRICT PARALLEL SAFE SET search_path = pg_catalog, pg_temp AS $$
DECLARE
    clock CONSTANT text := '(?:^|(?<=[[:space:]]))(?:([0-9]{1,2})[[:space:]]*[:.][[:space:]]*'
        '([0-9]{1,2})(?:[[:space:]]*[:.][[:space:]]*([0-9]{1,2}))?[[:space:]]*(am|pm|a|p)?'
        '|([0-9]{1,2})[[:space:]]*(am|pm|a|p))(?=$|[[:space:]])';
    rest text COLLATE "C" := btrim(x, '{spaces}');
    parts text[] := regexp_match(rest, clock, 'i');
BEGIN
    IF parts IS NULL THEN
        RETURN tallyroom.tr_read_day(rest);
    END IF;
    rest := btrim(regexp_replace(rest, clock, ' ', 'i'), '{spaces}');
    RETURN CASE WHEN rest = '' THEN date '1899-12-30' ELSE tallyroom.tr_read_day(rest) END
        + tallyroom.tr_clock(parts);
END $$)",
};

// What does not count around a number or a date.
QString spaces() {
    QString result;
    for (char16_t c = 1; c < u'\xFFFF'; ++c) {
        if (QChar(c).isSpace())
            result += QChar(c);
    }
    return result;
}

} // namespace

QStringList postgresConversions() {
    QStringList statements;
    const auto add = [&statements, around = spaces()](const auto& functions) {
        for (const char* function : functions)
            statements << QString::fromLatin1(function)
                              .replace(QStringLiteral("{spaces}"), around)
                              .replace(QStringLiteral("{minus}"), QStringLiteral("\u2212"));
    };
    add(numberFunctions);
    add(dateFunctions);
    return statements;
}

} // namespace tallyroom
