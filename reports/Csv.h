// A report as comma-separated values.
#pragma once

#include "reports/Report.h"

namespace tallyroom {

// The tables after RFC 4180, each with its headings, a blank line between two of them; under its
// caption where there are several. A chart that no table repeats is one of them; without any table
// the words are the lines. Days are written "2024-03-31", amounts of time "26:15". A text that a
// spreadsheet would take for a formula has an apostrophe before it. UTF-8.
QByteArray reportCsv(const Report& report);

} // namespace tallyroom
