#include "store/engine/FieldValue.h"

#include "store/ErrorSource.h"

namespace tallyroom {

namespace {

Variant converted(const Variant& value, sql::ValueType type) {
    switch (type) {
    case sql::ValueType::Boolean:
        return Variant(value.toBoolean());
    case sql::ValueType::Long:
        return {value.toLong()};
    case sql::ValueType::Double:
        return {value.toDouble()};
    case sql::ValueType::Date:
        return {value.toDate()};
    default:
        return {value.toText()};
    }
}

} // namespace

Variant fieldValue(const Variant& value, sql::ValueType type, int width) {
    if (value.isNull() || value.isEmpty())
        return Variant::null();
    Variant result;
    try {
        result = converted(value, type);
    } catch (const RunError&) {
        throw RunError::make(ErrorNumber::conversionFailed, {}, ErrorSource::field);
    }
    if (type == sql::ValueType::Text && width > 0 && result.toText().size() > width)
        throw RunError::make(ErrorNumber::fieldTooSmall, {}, ErrorSource::field);
    return result;
}

Variant insertedValue(const Variant& value, sql::ValueType type, int width) {
    if (value.isNull() || value.isEmpty())
        return Variant::null();
    try {
        Variant result = converted(value, type);
        if (type == sql::ValueType::Text && width > 0 && result.toText().size() > width)
            return {result.toText().left(width)};
        return result;
    } catch (const RunError&) {
        return Variant::null();
    }
}

} // namespace tallyroom
