#include "store/Readable.h"

#include "common/RunError.h"

namespace tallyroom::Readable {

std::optional<QString> key(const Variant& value) {
    if (!value.isNull() && !value.isNumber() && value.type() != Variant::Type::Text)
        return std::nullopt;
    QString text = value.textOrEmpty();
    const bool whole =
        !text.contains(QChar(QChar::Null)) && !text.contains(QChar(QChar::ReplacementCharacter));
    return whole ? std::optional(std::move(text)) : std::nullopt;
}

QString text(const Variant& value) {
    return value.type() == Variant::Type::Bytes ? QStringLiteral("") : value.textOrEmpty();
}

// An exception for each cell that is empty would cost more than reading them.
Variant date(const Variant& value) {
    if (value.isNull())
        return value;
    try {
        return {value.toDate()};
    } catch (const RunError&) {
        return Variant::null();
    }
}

Variant number(const Variant& value) {
    if (value.isNull())
        return value;
    try {
        return {value.toLong()};
    } catch (const RunError&) {
        return Variant::null();
    }
}

} // namespace tallyroom::Readable
