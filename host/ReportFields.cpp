#include "host/ReportFields.h"

#include "reports/Reports.h"

#include <algorithm>

namespace tallyroom::host {

namespace {

struct Known {
    const char16_t* name; // that of the kind, as the command line has it
    const char16_t* title;
    std::vector<ReportField> fields;
};

const std::vector<Known>& all() {
    using enum ReportField;
    static const std::vector<Known> known{
        {u"", u"Overtime", {Period, Grouping}},
        {u"fairness", u"Fairness", {Period, Group, Compared}},
        {u"calls", u"Call sheet", {Period, Day, Times, Group, Order}},
        {u"checks", u"Checks", {Period}},
        {u"standing", u"Standing", {Day, Employee, Order}}};
    return known;
}

ScreenKind kindOf(const Known& known) {
    return Reports::named(QString::fromUtf16(known.name));
}

} // namespace

std::vector<ScreenReport> screenReports() {
    std::vector<ScreenReport> reports;
    for (const Known& known : all()) {
        const ScreenKind kind = kindOf(known);
        if (kind || *known.name == 0)
            reports.push_back({kind, QString::fromUtf16(known.title)});
    }
    return reports;
}

bool asksFor(ScreenKind kind, ReportField field) {
    const auto known = std::ranges::find_if(
        all(), [&](const Known& each) { return kind ? kindOf(each) == kind : *each.name == 0; });
    return known != all().end() && std::ranges::count(known->fields, field) > 0;
}

} // namespace tallyroom::host
