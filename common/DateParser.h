// Reading date texts.
#pragma once

#include "common/Dates.h"

namespace tallyroom::Dates {

// Reads a text as the old run time's date parser does for the en-US locale; nothing when it is no
// date. Accepts month/day/year with swapped day and month where only that makes sense, month names,
// a time alone (on day 0), am and pm, and a point between hour and minute.
std::optional<Date> parse(const QString& text);
bool isDate(const QString& text);

} // namespace tallyroom::Dates
