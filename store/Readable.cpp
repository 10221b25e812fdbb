#include "store/Readable.h"

#include "common/RunError.h"

namespace tallyroom::Readable {

namespace {

// The platform's dates, in days.
constexpr double firstDay = -657434;
constexpr double afterLastDay = 2958466;

} // namespace

std::optional<QString> key(const Variant& value) {
    if (!value.isNull() && value.type() != Variant::Type::Text)
        return std::nullopt;
    QString text = value.textOrEmpty();
    return text.contains(QChar(QChar::Null)) ? std::nullopt : std::optional(std::move(text));
}

QString text(const Variant& value) {
    return value.type() == Variant::Type::Bytes ? QStringLiteral("") : value.textOrEmpty();
}

Variant date(const Variant& value) {
    try {
        const Date date = value.toDate();
        if (date.serial >= firstDay && date.serial < afterLastDay)
            return {date};
    } catch (const RunError&) {
    }
    return Variant::null();
}

Variant number(const Variant& value) {
    try {
        return {value.toLong()};
    } catch (const RunError&) {
        return Variant::null();
    }
}

} // namespace tallyroom::Readable
