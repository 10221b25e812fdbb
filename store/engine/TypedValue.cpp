#include "store/engine/TypedValue.h"

#include <cmath>
#include <limits>

namespace tallyroom {

Variant wholeNumber(double number) {
    const bool fits =
        number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
    return fits ? Variant(static_cast<int>(number)) : Variant(number);
}

Variant typedNumber(double number, sql::ValueType type) {
    switch (type) {
    case sql::ValueType::Boolean:
        return Variant(number != 0);
    case sql::ValueType::Long:
        return wholeNumber(std::nearbyint(number));
    case sql::ValueType::Date:
        return Dates::isInRange({number}) ? Variant(Date{number}) : Variant(number);
    default:
        return {number};
    }
}

Variant typedText(const QString& text, sql::ValueType type) {
    if (type == sql::ValueType::Date) {
        if (const auto date = Dates::fromIso(text))
            return {*date};
    }
    return {text};
}

} // namespace tallyroom
