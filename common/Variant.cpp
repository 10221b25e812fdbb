#include "common/Variant.h"

#include "common/DateParser.h"
#include "common/Objects.h"
#include "common/RunError.h"

#include <QLocale>
#include <cmath>
#include <limits>

namespace tallyroom {

namespace {

[[noreturn]] void raise(int number) {
    throw RunError::make(number);
}

double numberOrRaise(const QString& text) {
    const auto number = parseNumber(text);
    if (!number)
        raise(ErrorNumber::typeMismatch);
    return *number;
}

} // namespace

Variant::Variant(const ObjectRef& value) : m_value(std::make_shared<const ObjectRef>(value)) {}

Variant::Variant(VariantArray value)
    : m_value(std::make_shared<const VariantArray>(std::move(value))) {}

Variant Variant::null() {
    Variant result;
    result.m_value = NullValue{};
    return result;
}

QString Variant::toText() const {
    switch (type()) {
    case Type::Empty:
        return QStringLiteral("");
    case Type::Null:
        raise(ErrorNumber::invalidUseOfNull);
    case Type::Boolean:
        return std::get<bool>(m_value) ? QStringLiteral("True") : QStringLiteral("False");
    case Type::Long:
        return QString::number(std::get<std::int32_t>(m_value));
    case Type::Double:
        return numberText(std::get<double>(m_value));
    case Type::Date:
        return Dates::toText(std::get<Date>(m_value));
    case Type::Text:
        return std::get<QString>(m_value);
    default:
        raise(ErrorNumber::typeMismatch);
    }
}

QString Variant::textOrEmpty() const {
    return isNull() ? QStringLiteral("") : toText();
}

double Variant::toDouble() const {
    switch (type()) {
    case Type::Empty:
        return 0;
    case Type::Null:
        raise(ErrorNumber::invalidUseOfNull);
    case Type::Boolean:
        return std::get<bool>(m_value) ? -1 : 0;
    case Type::Long:
        return std::get<std::int32_t>(m_value);
    case Type::Double:
        return std::get<double>(m_value);
    case Type::Date:
        return std::get<Date>(m_value).serial;
    case Type::Text:
        return numberOrRaise(std::get<QString>(m_value));
    default:
        raise(ErrorNumber::typeMismatch);
    }
}

std::int32_t Variant::toLong() const {
    return type() == Type::Long ? std::get<std::int32_t>(m_value) : roundToLong(toDouble());
}

bool Variant::toBoolean() const {
    if (type() == Type::Text) {
        const QString& text = std::get<QString>(m_value);
        if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
            return true;
        if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
            return false;
    }
    return toDouble() != 0;
}

Date Variant::toDate() const {
    if (type() == Type::Text) {
        if (const auto date = Dates::parse(std::get<QString>(m_value)))
            return *date;
    }
    const Date date{toDouble()};
    if (!Dates::isInRange(date))
        raise(ErrorNumber::overflow);
    return date;
}

ObjectRef Variant::toObject() const {
    if (type() != Type::Object)
        raise(ErrorNumber::objectRequired);
    return *std::get<std::shared_ptr<const ObjectRef>>(m_value);
}

const QByteArray& Variant::toBytes() const {
    if (type() != Type::Bytes)
        raise(ErrorNumber::typeMismatch);
    return std::get<QByteArray>(m_value);
}

const VariantArray& Variant::toArray() const {
    if (type() != Type::Array)
        raise(ErrorNumber::typeMismatch);
    return *std::get<std::shared_ptr<const VariantArray>>(m_value);
}

bool Variant::sameValue(const Variant& other) const {
    if (type() != other.type())
        return false;
    switch (type()) {
    case Type::Empty:
        return true;
    case Type::Text:
        return std::get<QString>(m_value) == std::get<QString>(other.m_value);
    case Type::Boolean:
    case Type::Long:
    case Type::Double:
    case Type::Date:
        return toDouble() == other.toDouble();
    case Type::Bytes:
        return toBytes() == other.toBytes();
    default:
        return false;
    }
}

std::int32_t roundToLong(double value) {
    const double rounded = std::nearbyint(value); // the default mode rounds halves to even
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max()))
        raise(ErrorNumber::overflow);
    return static_cast<std::int32_t>(rounded);
}

QString numberText(double value) {
    constexpr double allDigits = 1e15; // from here on with an exponent
    if (std::abs(value) < allDigits && value == std::trunc(value))
        return QString::number(static_cast<qint64>(value));
    return QString::number(value == 0 ? 0.0 : value, 'G', 15);
}

std::optional<double> parseNumber(const QString& text) {
    bool ok = false;
    const double number = QLocale::c().toDouble(text.trimmed(), &ok);
    if (!ok || !std::isfinite(number))
        return std::nullopt;
    return number;
}

} // namespace tallyroom
