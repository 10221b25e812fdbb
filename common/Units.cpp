#include "common/Units.h"

#include "common/Format.h"
#include "common/RunError.h"

#include <cmath>
#include <limits>

namespace tallyroom {

namespace {

enum class Unit { Minutes, Time, Decimal, Percent, Unknown };

Unit unitOf(const QString& name) {
    if (name == QLatin1String("1") || name == QLatin1String("MINUTES"))
        return Unit::Minutes;
    if (name == QLatin1String("2") || name == QLatin1String("HH:MM") ||
        name == QLatin1String("TIME"))
        return Unit::Time;
    if (name == QLatin1String("3") || name == QLatin1String("DECIMAL"))
        return Unit::Decimal;
    if (name == QLatin1String("4") || name == QLatin1String("PERCENT"))
        return Unit::Percent;
    return Unit::Unknown;
}

double number(const QString& text) {
    return Variant(text).toDouble();
}

// Hours with a decimal point. The general date parser would read the point as a colon, but as an
// amount "7.5" is seven hours and a half. A mark for the afternoon adds twelve hours, as it does
// to a clock time.
QString decimalHours(const QString& text) {
    QString hours = text;
    double add = 0;
    const QString mark = text.right(2).toUpper();
    if (mark == QLatin1String("AM") || mark == QLatin1String("PM")) {
        hours = text.chopped(2).trimmed();
        add = mark == QLatin1String("PM") && parseNumber(hours).value_or(12) < 12 ? 12 : 0;
    }
    hours.remove(QLatin1Char(' '));
    const auto value = hours.contains(QLatin1Char('.')) ? parseNumber(hours) : std::nullopt;
    return value ? QString::number(*value + add, 'f', 4) : QString();
}

QString clockOrHours(const Variant& value) {
    if (value.type() == Variant::Type::Text) {
        QString hours = decimalHours(value.toText());
        if (!hours.isEmpty())
            return hours;
    }
    if (value.isNumber())
        value.toDate(); // raises what is beyond all clocks
    return formatValue(value, QStringLiteral("HH:MM"));
}

QString minutesOfTime(Variant& value) {
    bool negative = false;
    const QString text = value.toText().trimmed();
    if (text.startsWith(QLatin1Char('-'))) {
        negative = true;
        value = Variant(text.mid(1, 69).trimmed());
    }
    const bool isText = value.type() == Variant::Type::Text;
    const QString t = clockOrHours(isText ? Variant(value.toText().trimmed()) : value);
    double minutes = 0;
    if (t.contains(QLatin1Char('.')))
        minutes = number(t) * 60;
    else if (!t.isEmpty())
        minutes = std::trunc(number(t.chopped(std::min<qsizetype>(3, t.size())))) * 60 +
                  std::trunc(number(t.right(2)));
    return numberText(negative ? -minutes : minutes);
}

QString toMinutesText(Variant& value, Unit from) {
    switch (from) {
    case Unit::Minutes:
        return value.toText();
    case Unit::Percent:
        value = Variant(value.toDouble() * 1440);
        return value.toText();
    case Unit::Decimal:
        value = Variant(value.toDouble() * 60);
        return value.toText();
    case Unit::Time:
        return minutesOfTime(value);
    case Unit::Unknown:
        break;
    }
    return {};
}

// The remainder takes both numbers rounded, so that half a minute short of the hour reads ":00".
// Less than an hour keeps its sign too, so that every amount reads back as what it was.
QString timeOf(double minutes) {
    const double hours = std::trunc(minutes / 60);
    const Variant rest(static_cast<std::int32_t>(roundToLong(minutes) % 60));
    const QString picture = QStringLiteral("00");
    QString whole = formatValue(Variant(hours), picture);
    if (hours == 0 && minutes < 0)
        whole.prepend(QLatin1Char('-'));
    return whole + QLatin1Char(':') + formatValue(rest, picture).right(2);
}

// In single precision.
double single(double value) {
    if (!(std::abs(value) <= std::numeric_limits<float>::max()))
        throw RunError::make(ErrorNumber::overflow);
    return static_cast<float>(value);
}

Variant fromMinutes(const QString& m, Unit to) {
    switch (to) {
    case Unit::Minutes:
        return Variant(m).toLong();
    case Unit::Time:
        return timeOf(number(m));
    case Unit::Decimal:
        return formatValue(Variant(single(number(m) / 60)), QStringLiteral("###00.00"));
    case Unit::Percent: // with the digits that such a number shows
        return number(QString::number(single(number(m) / 1440), 'g', 7));
    case Unit::Unknown:
        break;
    }
    return {};
}

bool isColonTime(const QString& text, qsizetype colon) {
    if (colon < 1 || colon > 7 || text.size() - colon - 1 != 2)
        return false;
    const auto minutes = parseNumber(text.mid(colon + 1));
    return parseNumber(text.left(colon)) && minutes && *minutes <= 59;
}

bool isPointTime(const QString& text, qsizetype point) {
    const qsizetype decimals = text.size() - point - 1;
    return point >= 1 && point <= 7 && decimals >= 1 && decimals <= 2 &&
           parseNumber(text.left(point)) && parseNumber(text.mid(point + 1));
}

bool isTimeCharacter(QChar c) {
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char(':') ||
           c == QLatin1Char('.') || c == QLatin1Char(' ');
}

} // namespace

Variant ConvertUnits(Variant& value, QString& toUnit, QString& fromUnit) {
    toUnit = toUnit.trimmed().toUpper();
    fromUnit = fromUnit.trimmed().toUpper();
    if (value.isNull())
        return {};
    return fromMinutes(toMinutesText(value, unitOf(fromUnit)), unitOf(toUnit));
}

Variant Nz(const Variant& value) {
    return value.isNull() ? Variant() : value;
}

Variant Nz(const Variant& value, const Variant& defaultValue) {
    return value.isNull() ? defaultValue : value;
}

QString minutesAsTime(const Variant& minutes) {
    Variant value = minutes;
    QString to = QStringLiteral("TIME");
    QString from = QStringLiteral("MINUTES");
    return ConvertUnits(value, to, from).textOrEmpty();
}

bool IsTime(const QString& text) {
    QString s = text.trimmed();
    const QString mark = s.right(2).toUpper();
    if (mark == QLatin1String("AM") || mark == QLatin1String("PM"))
        s = s.chopped(2).trimmed();
    if (s.startsWith(QLatin1Char('-')))
        s = s.mid(1).trimmed();
    if (s.isEmpty() || !std::all_of(s.begin(), s.end(), isTimeCharacter))
        return false;
    const qsizetype colon = s.indexOf(QLatin1Char(':'));
    const qsizetype point = s.indexOf(QLatin1Char('.'));
    if ((colon < 0) == (point < 0))
        return false;
    return colon >= 0 ? isColonTime(s, colon) : isPointTime(s, point);
}

namespace TimeConversion {

std::int32_t toMinutes(const QString& text) {
    Variant value(text);
    QString to = QStringLiteral("MINUTES");
    QString from = QStringLiteral("TIME");
    return ConvertUnits(value, to, from).toLong();
}

QString toTimeText(std::int32_t minutes) {
    return minutesAsTime(Variant(minutes));
}

QString toShortText(std::int32_t minutes) {
    const QString text = toTimeText(minutes);
    return text.startsWith(QLatin1Char('0')) ? text.mid(1) : text;
}

Date timeAsDate(const QString& text) {
    const qsizetype colon = text.indexOf(QLatin1Char(':'));
    const auto hours = parseNumber(text.left(colon));
    const auto minutes = parseNumber(text.mid(colon + 1));
    if (colon < 1 || !hours || !minutes || text.startsWith(QLatin1Char('-')) || *minutes > 59)
        throw RunError::make(ErrorNumber::typeMismatch);
    const double total = *hours * 60 + *minutes;
    if (total > 1440)
        throw RunError::make(ErrorNumber::typeMismatch);
    return {total / 1440};
}

} // namespace TimeConversion
} // namespace tallyroom
