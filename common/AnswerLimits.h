// What an offer of overtime usually is. Nothing beyond it is refused; it is said, so that a slip is
// seen before it is recorded, and after.
#pragma once

#include "common/Dates.h"

namespace tallyroom::AnswerLimits {

inline constexpr int shortest = 15;     // minutes
inline constexpr int longest = 12 * 60; // minutes
inline constexpr int farthest = 60;     // days from today to the overtime, before or after

// What is unusual, in words: "more than 12:00", "365 days ago", "a time without a date". Empty when
// nothing is.
QString doubtAboutMinutes(int minutes);
QString doubtAboutDay(Date day, Date today);

} // namespace tallyroom::AnswerLimits
