// Who works which shift on which day.
#pragma once

#include "reports/Period.h"
#include "reports/ValueTable.h"

namespace tallyroom::host {

enum class ScheduleSpan { Day, Week, Month };

// The day itself, the week from Monday to Sunday, or the calendar month around a day.
Period spanAround(QDate day, ScheduleSpan span);

// The same place in the span before (−1) or after (1).
QDate moved(QDate day, ScheduleSpan span, int direction);

// One line for each employee. A single day comes with the shift's hours and what was recorded of
// the day; a longer span has a column for each day.
ValueTable scheduleTable(Database& database, const HostData& data, const Period& period);

} // namespace tallyroom::host
