#include "common/Format.h"

#include "common/DateParser.h"
#include "common/RunError.h"

#include <cmath>

namespace tallyroom {

namespace {

bool isNumberPicture(const QString& picture) {
    return !picture.isEmpty() && std::all_of(picture.begin(), picture.end(), [](QChar c) {
        return c == QLatin1Char('0') || c == QLatin1Char('#') || c == QLatin1Char('.');
    });
}

// "!" aligns left; every "@" is one place. A text longer than the places keeps its end.
QString formatText(const QString& text, const QString& picture) {
    const qsizetype places = picture.count(QLatin1Char('@'));
    if (picture.startsWith(QLatin1Char('!')))
        return text.right(places).leftJustified(places);
    return text.rightJustified(places);
}

// Rounds halves away from zero, unlike a conversion to a whole number.
QString formatNumber(double value, const QString& picture) {
    const qsizetype point = picture.indexOf(QLatin1Char('.'));
    const QString whole = point < 0 ? picture : picture.left(point);
    const int decimals = point < 0 ? 0 : static_cast<int>(picture.size() - point - 1);
    const double scale = std::pow(10.0, decimals);
    const double rounded = std::round(std::abs(value) * scale) / scale;
    QString digits = QString::number(rounded, 'f', decimals);
    const qsizetype width = whole.count(QLatin1Char('0')) + (decimals > 0 ? decimals + 1 : 0);
    digits = digits.rightJustified(width, QLatin1Char('0'));
    return value < 0 && rounded != 0 ? QLatin1Char('-') + digits : digits;
}

std::optional<Date> dateOf(const Variant& value) {
    const bool isText = value.type() == Variant::Type::Text;
    if (const auto date = isText ? Dates::parse(value.toText()) : std::nullopt)
        return date;
    const auto serial = isText ? parseNumber(value.toText()) : value.toDouble();
    return serial && Dates::isInRange({*serial}) ? std::optional(Date{*serial}) : std::nullopt;
}

bool isBlank(const Variant& value) {
    if (value.isNumber() || value.type() == Variant::Type::Date)
        return false;
    return value.isNull() || value.toText().isEmpty();
}

} // namespace

QString formatValue(const Variant& value, const QString& picture) {
    if (isBlank(value))
        return QStringLiteral("");
    if (picture.contains(QLatin1Char('@')))
        return formatText(value.toText(), picture);
    if (isNumberPicture(picture)) {
        const bool isText = value.type() == Variant::Type::Text;
        const auto number = isText ? parseNumber(value.toText()) : value.toDouble();
        return number ? formatNumber(*number, picture) : value.toText();
    }
    if (const auto date = dateOf(value))
        return Dates::format(*date, picture);
    return value.type() == Variant::Type::Date ? numberText(value.toDouble()) : value.toText();
}

} // namespace tallyroom
