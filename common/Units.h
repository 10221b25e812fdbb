// Amounts of time: reading what users type, converting between units, writing minutes.
#pragma once

#include "common/Variant.h"

namespace tallyroom {

// Converts an amount between "MINUTES" (or "1"), "HH:MM"/"TIME" ("2"), "DECIMAL" hours ("3") and
// "PERCENT" of a day ("4"). The unit names are trimmed and upper-cased in the caller's variables,
// and `value` may be overwritten on the way. Null and an unknown target give Empty; an unknown
// source raises 13.
Variant ConvertUnits(Variant& value, QString& toUnit, QString& fromUnit);

// The value, or when it is Null the default; without a default a Null gives Empty, since a Null has
// no type that would choose one.
Variant Nz(const Variant& value);
Variant Nz(const Variant& value, const Variant& defaultValue);

// Whether a typed text is an acceptable amount: "7:30", "07:30 PM", "-1:15", "7.5".
bool IsTime(const QString& text);

// Minutes as the grid shows them, "01:30".
QString minutesAsTime(const Variant& minutes);

// Typed amounts to whole minutes and minutes back to a time.
namespace TimeConversion {
// "7:30" is 450, "7.5" (hours) 450, "7:30 PM" 1170, "24:00" 1440. Raises 13 for other texts.
std::int32_t toMinutes(const QString& text);
QString toTimeText(std::int32_t minutes);
// As it is said: "8:00" where toTimeText() has "08:00".
QString toShortText(std::int32_t minutes);
// A time text as a date. "24:00", no time of a clock, is one day; more raises 13.
Date timeAsDate(const QString& text);
} // namespace TimeConversion

} // namespace tallyroom
