// The period over which the board totals overtime.
#pragma once

#include "common/Dates.h"
#include "common/RunError.h"

#include <QString>
#include <optional>

namespace tallyroom {

// First and last shift date, both included. There is no rule that the first is the earlier one.
struct TotallingPeriod {
    Date from;
    Date to;

    bool contains(Date date) const { return date >= from && date <= to; }

    // The stored period; nothing when it is indefinite (no row, or either date Null). Raises
    // `unreadable`, and says so, when the row holds anything but dates. Both raise what the
    // database raises.
    static constexpr int unreadable = ErrorNumber::typeMismatch;
    static std::optional<TotallingPeriod> read(const QString& dataPath);
    // Keeps the days alone, without their times of day.
    static void write(const QString& dataPath, const std::optional<TotallingPeriod>& period);
};

} // namespace tallyroom
