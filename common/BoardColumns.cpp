#include "common/BoardColumns.h"

#include <algorithm>

namespace tallyroom {

namespace {

using enum CellKind;
using enum BoardColumn::Shown;

constexpr const char16_t* unsorted = nullptr;
constexpr auto weighed = &BoardOptions::multiply;
constexpr auto withAccepted = &BoardOptions::totalWithAccepted;

constexpr BoardColumn table[] = {
    {u"Code", u"emp_code", Code, u"Employee Code"},
    {u"Name", u"emp_name", Text, u"Employee Name"},
    {u"Dept", u"emp_dept", Text, u"Home Department", {u"mnuDept", u"Department", true}},
    {u"Position", u"qual_code", Text, u"Position", {u"mnuPos", u"Position"}},
    {u"Phone", u"phone", Phone},
    {u"Alt. Phone", u"altphone", Phone, unsorted, {u"mnuAltPhone", u"Alternate Phone Number"}},
    {u"Cell Phone", u"cellphone", Phone, unsorted, {u"mnuCellPhone", u"Cellular Phone Number"}},
    {u"Pager", u"pager", Phone, unsorted, {u"mnuPager", u"Pager Phone Number"}},
    {u"Sen. Date", u"sendate", Day, u"Seniority Date", {u"mnuSenDate", u"Seniority Date", true}},
    {u"Sen. #", u"seniority", Number, u"Seniority Number", {u"mnuSenNum", u"Seniority Number"}},
    {u"1.5", u"T15Hours", Time, u"1.5", {}, BrokenOut, {weighed, u"T15Hours_Mult"}},
    {u"2.0", u"T20Hours", Time, u"2.0", {}, BrokenOut, {weighed, u"T20Hours_Mult"}},
    {u"OT Worked", u"workedot", Time, u"Worked Overtime", {}, Together},
    {u"1.5 Accepted", u"T15Accepted", Time, u"Accepted 1.5", {}, BrokenOut},
    {u"2.0 Accepted", u"T20Accepted", Time, u"Accepted 2.0", {}, BrokenOut},
    {u"1.5 Declined", u"T15Declined", Time, u"Declined 1.5", {}, BrokenOut},
    {u"2.0 Declined", u"T20Declined", Time, u"Declined 2.0", {}, BrokenOut},
    {u"OT Accepted", u"acceptedot", Time, u"Accepted Overtime", {}, Together},
    {u"OT Declined", u"declinedot", Time, u"Declined Overtime", {}, Together},
    {u"Total", u"totalot2", Time, u"Total Overtime", {}, Always, {withAccepted, u"totalot1"}},
};

} // namespace

bool BoardColumn::isShown(const BoardOptions& options) const {
    if (entry.name)
        return options.columns.contains(QStringView(entry.name));
    return shown == Always || options.breakOut == (shown == BrokenOut);
}

QString BoardColumn::fieldFor(const BoardOptions& options) const {
    const bool substituted = substitute.option && options.*substitute.option;
    return QString::fromUtf16(substituted ? substitute.field : field);
}

std::span<const BoardColumn> BoardColumns::all() {
    return table;
}

std::vector<const BoardColumn*> BoardColumns::shown(const BoardOptions& options) {
    std::vector<const BoardColumn*> columns;
    for (const BoardColumn& column : table) {
        if (column.isShown(options))
            columns.push_back(&column);
    }
    return columns;
}

QStringList BoardColumns::headersOf(CellKind kind) {
    QStringList headers;
    for (const BoardColumn& column : table) {
        if (column.kind == kind)
            headers.append(QString::fromUtf16(column.header));
    }
    return headers;
}

QStringList BoardColumns::elements() {
    QStringList names;
    for (const BoardColumn& column : table) {
        if (column.element)
            names.append(QString::fromUtf16(column.element));
    }
    return names;
}

const BoardColumn* BoardColumns::ofElement(const QString& element) {
    const QString name = element.toLower();
    const auto found = std::ranges::find_if(table, [&](const BoardColumn& column) {
        return column.element && name == QString::fromUtf16(column.element).toLower();
    });
    return found == std::end(table) ? nullptr : found;
}

} // namespace tallyroom
