// Moments of the audit, in statements and in notes.
#pragma once

#include "common/Dates.h"

namespace tallyroom::Moments {

// The condition that a date column lies within days, whatever its time of day: what was typed with
// a time is stored with it.
QString within(const QString& column, QDate from, QDate to);

// "11/21/2026 9:12", without the pictures that take many times as long.
QString text(Date moment);

} // namespace tallyroom::Moments
