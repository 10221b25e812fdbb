// Entries of the audit as reports read them.
#pragma once

#include "audit/Standing.h"
#include "setup/TotallingPeriod.h"
#include "store/Database.h"

#include <QDate>
#include <vector>

namespace tallyroom {

// The entries for the day in the order of their recording, deleted ones among them; those that
// cannot be read are left out. Raises what the database raises.
std::vector<Standing::EntryKey> entriesOf(Database& addIn, QDate day);

// The same for those of which a column of dates, "Now" or "Date", lies within days.
std::vector<Standing::EntryKey> entriesWithin(Database& addIn, const QString& column, QDate from,
                                              QDate to);

// Those that were recorded at that moment or later, for days of the period; for all days without
// one.
std::vector<Standing::EntryKey> entriesSince(Database& addIn, Date moment,
                                             const std::optional<TotallingPeriod>& period);

// "Declined 8:00 at 2.0, 11/21/2026 9:12 by jo". A deleted entry does not say what it was.
QString entryText(const Standing::EntryKey& entry);

} // namespace tallyroom
