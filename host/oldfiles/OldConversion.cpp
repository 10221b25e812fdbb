#include "host/oldfiles/OldConversion.h"

#include "common/RunError.h"

#include <cmath>

namespace tallyroom::host {

namespace {

// As the values of the late-bound world, whose conversions are wanted. An amount's digits convert
// as a text of them does.
Variant variantOf(const OldValue& value) {
    struct Maker {
        Variant operator()(std::monostate) const { return Variant::null(); }
        Variant operator()(const OldDecimal& decimal) const { return {decimal.digits}; }
        Variant operator()(bool flag) const { return Variant(flag); }
        Variant operator()(qint32 number) const { return {number}; }
        Variant operator()(double number) const { return {number}; }
        Variant operator()(Date date) const { return {date}; }
        Variant operator()(const QString& text) const { return {text}; }
        Variant operator()(const QByteArray& bytes) const { return {bytes}; }
    };
    return std::visit(Maker{}, value);
}

ConvertedValue unconverted() {
    return {Variant::null(), OldChange::Unconverted};
}

// Without zero characters, which not all engines keep, and halves of characters. What the reader
// could not decode is a replacement character already.
QString cleaned(const QString& text) {
    QString kept = text;
    kept.remove(QChar::Null);
    return kept.isValidUtf16() ? kept : QString::fromStdU32String(kept.toStdU32String());
}

// Texts of numbers have fifteen digits.
bool losesDigits(const Variant& value, const QString& text) {
    return value.type() == Variant::Type::Double && text.toDouble() != value.toDouble();
}

ConvertedValue toText(const Variant& value, const TableFormat::Column& column) {
    if (value.type() == Variant::Type::Double && !std::isfinite(value.toDouble()))
        return unconverted();
    const QString text = value.toText();
    QString kept = cleaned(text);
    const bool isClean = kept == text && !text.contains(QChar::ReplacementCharacter);
    if (column.type == Schema::ColumnType::Memo || kept.size() <= column.width)
        return {Variant(kept), losesDigits(value, text) ? OldChange::Rounded
                               : isClean                ? OldChange::None
                                                        : OldChange::Cleaned};
    const bool isWithinPair = kept[column.width].isLowSurrogate();
    kept.truncate(column.width - (isWithinPair ? 1 : 0));
    return {Variant(kept), OldChange::Cut};
}

ConvertedValue toLong(const Variant& value) {
    const std::int32_t number = value.toLong();
    const bool isSame = value.toDouble() == number;
    return {Variant(number), isSame ? OldChange::None : OldChange::Rounded};
}

bool hasDigits(double number, const QString& digits) {
    const qsizetype point = digits.indexOf(u'.');
    const int decimals = point < 0 ? 0 : int(digits.size() - point - 1);
    return QString::number(number, 'f', decimals) == digits;
}

ConvertedValue toDouble(const Variant& value, const OldValue& old) {
    const double number = value.toDouble();
    if (!std::isfinite(number))
        return unconverted();
    const auto* decimal = std::get_if<OldDecimal>(&old);
    const bool isSame = !decimal || hasDigits(number, decimal->digits);
    return {Variant(number), isSame ? OldChange::None : OldChange::Rounded};
}

ConvertedValue toDate(const Variant& value) {
    constexpr double closeEnough = 0.001 / 86400; // a millisecond, in days
    const Date date = value.toDate();
    const Date kept = Dates::fromQDateTime(Dates::toQDateTime(date));
    // Before the first day the fraction counts forward, so that equal moments have two forms.
    const bool isFirstDay = std::abs(date.serial) < 1;
    const double difference =
        isFirstDay ? std::abs(date.serial) - std::abs(kept.serial) : date.serial - kept.serial;
    return {Variant(kept),
            std::abs(difference) < closeEnough ? OldChange::None : OldChange::Rounded};
}

ConvertedValue toType(const OldValue& old, const TableFormat::Column& column) {
    using enum Schema::ColumnType;
    const Variant value = variantOf(old);
    switch (column.type) {
    case Text:
    case Memo:
        return toText(value, column);
    case Long:
    case Counter:
        return toLong(value);
    case Double:
        return toDouble(value, old);
    case Date:
        return toDate(value);
    case Boolean:
        return {Variant(value.toBoolean()), OldChange::None};
    }
    return unconverted();
}

// On one line, and nothing that a terminal would obey.
QString excerpt(const QString& text) {
    constexpr qsizetype longest = 100;
    QString part = text.left(longest);
    for (QChar& letter : part) {
        if (letter.category() == QChar::Other_Control || letter == QChar::LineSeparator ||
            letter == QChar::ParagraphSeparator)
            letter = u'·';
    }
    if (text.size() <= longest)
        return u'\'' + part + u'\'';
    return QStringLiteral("'%1…' (%2 characters)").arg(part, QString::number(text.size()));
}

} // namespace

ConvertedValue converted(const OldValue& value, const TableFormat::Column& column) {
    if (std::holds_alternative<std::monostate>(value))
        return {Variant::null(), OldChange::None};
    if (std::holds_alternative<QByteArray>(value))
        return unconverted();
    try {
        return toType(value, column);
    } catch (const RunError&) {
        return unconverted();
    }
}

QString shown(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Null:
        return QStringLiteral("nothing");
    case Variant::Type::Text:
        return excerpt(value.toText());
    case Variant::Type::Bytes:
        return QStringLiteral("%1 bytes").arg(value.toBytes().size());
    case Variant::Type::Date:
        return Dates::isInRange(value.toDate()) ? Dates::toIso(value.toDate())
                                                : QStringLiteral("a date that is none");
    case Variant::Type::Double:
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    default:
        return value.toText();
    }
}

QString shown(const OldValue& value) {
    if (const auto* decimal = std::get_if<OldDecimal>(&value))
        return decimal->digits;
    if (const auto* date = std::get_if<Date>(&value)) {
        if (!Dates::isInRange(*date))
            return QStringLiteral("the date numbered %1").arg(date->serial, 0, 'g', 17);
        return QStringLiteral("%1 (%2)").arg(Dates::toIso(*date),
                                             QString::number(date->serial, 'g', 17));
    }
    return shown(variantOf(value));
}

QString changeName(OldChange change) {
    switch (change) {
    case OldChange::None:
        break;
    case OldChange::Cut:
        return QStringLiteral("cut to its column's width");
    case OldChange::Cleaned:
        return QStringLiteral("characters that cannot be kept");
    case OldChange::Rounded:
        return QStringLiteral("rounded");
    case OldChange::Unconverted:
        return QStringLiteral("cannot be converted");
    }
    return {};
}

} // namespace tallyroom::host
