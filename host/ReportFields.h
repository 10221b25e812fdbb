// What the screen of the overtime analysis can show, and what each of it is asked by, there and on
// the command line.
#pragma once

#include "reports/ReportRequest.h"

namespace tallyroom::host {

// Without a kind it is the table of overtime, which is the screen's own.
using ScreenKind = std::optional<ReportKind>;

struct ScreenReport {
    ScreenKind kind;
    QString title;
};

// In the order in which they are offered.
std::vector<ScreenReport> screenReports();

enum class ReportField { Period, Grouping, Day, Times, Employee, Group, Order, Compared };

bool asksFor(ScreenKind kind, ReportField field);

} // namespace tallyroom::host
