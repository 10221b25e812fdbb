#include "host/ReportOptions.h"

#include "host/ReportFields.h"
#include "reports/Reports.h"

#include <QHash>

namespace tallyroom::host {

namespace {

struct ReportOption {
    const char* name;
    const char* value;
    const char* description;
    ReportField field; // that it fills in
};

constexpr ReportOption options[] = {
    {"from", "YYYY-MM-DD", "First day (the board's period; checks: two weeks of recording).",
     ReportField::Period},
    {"to", "YYYY-MM-DD", "Last day.", ReportField::Period},
    {"date", "YYYY-MM-DD", "The day of the overtime.", ReportField::Day},
    {"start", "HH:MM", "When the overtime begins.", ReportField::Times},
    {"hours", "H", "How long it lasts: 8, 7:30 or 7.5.", ReportField::Times},
    {"employee", "CODE", "Whose standing.", ReportField::Employee},
    {"department", "CODE", "Only employees of this department.", ReportField::Group},
    {"shift", "CODE", "Only employees of this shift.", ReportField::Group},
    {"qualification", "CODE", "Only employees with this qualification.", ReportField::Group},
    {"by", "WHAT", "Whose spread is shown: department, shift, classification.",
     ReportField::Compared},
    {"order", "DESCRIPTION", "In the order of this stored ordering.", ReportField::Order},
};

std::optional<Period> periodOption(const QCommandLineParser& parser) {
    const auto from = dateOption(parser, "from");
    const auto to = dateOption(parser, "to");
    if (from.has_value() != to.has_value())
        throw UsageError{text("--from and --to go together.")};
    return from ? std::optional(Period{std::min(*from, *to), std::max(*from, *to)}) : std::nullopt;
}

GroupBy groupByOption(const QCommandLineParser& parser) {
    static const QHash<QString, GroupBy> known{{text("department"), GroupBy::Department},
                                               {text("shift"), GroupBy::Shift},
                                               {text("classification"), GroupBy::Classification}};
    const QString given = parser.value(text("by"));
    if (parser.isSet(text("by")) && !known.contains(given))
        throw UsageError{text("--by must be one of: department, shift, classification.")};
    return known.value(given, GroupBy::Department);
}

ReportKind kindOption(const QCommandLineParser& parser) {
    const auto kind = Reports::named(parser.value(text("report")));
    if (!kind)
        throw UsageError{
            text("--report must be one of: %1.").arg(Reports::names().join(text(", ")))};
    return *kind;
}

void refuseUnused(const QCommandLineParser& parser, ReportKind kind) {
    for (const ReportOption& option : options) {
        if (parser.isSet(text(option.name)) && !asksFor(kind, option.field))
            throw UsageError{text("--%1 cannot be used with --report %2.")
                                 .arg(text(option.name), Reports::nameOf(kind))};
    }
}

// What a kind of report cannot do without.
void requireNeeded(const ReportRequest& request) {
    const bool needsDay = request.kind == ReportKind::Standing || request.kind == ReportKind::Calls;
    if (needsDay && !request.date.isValid())
        throw UsageError{text("--report %1 needs --date.").arg(Reports::nameOf(request.kind))};
    if (request.kind == ReportKind::Standing && request.employee.isEmpty())
        throw UsageError{text("--report standing needs --employee.")};
}

ReportFormat formatOption(const QCommandLineParser& parser, const QString& file) {
    if (!parser.isSet(text("format"))) {
        const auto ofFile = ReportFile::formatOf(file);
        if (!ofFile && !file.isEmpty())
            throw UsageError{text("What --out ends with tells no format: give one with --format.")};
        return ofFile.value_or(ReportFormat::Text);
    }
    const auto format = ReportFile::formatNamed(parser.value(text("format")));
    if (!format)
        throw UsageError{
            text("--format must be one of: %1.").arg(ReportFile::formatNames().join(text(", ")))};
    return *format;
}

} // namespace

void addReportOptions(QCommandLineParser& parser) {
    parser.addOption({text("report"),
                      text("Make a report of --data without a display: %1.")
                          .arg(Reports::names().join(text(", "))),
                      text("KIND")});
    for (const ReportOption& option : options)
        parser.addOption({text(option.name), text(option.description), text(option.value)});
    parser.addOption({text("format"),
                      text("Of the report: %1 (as --out ends, else text).")
                          .arg(ReportFile::formatNames().join(text(", "))),
                      text("FORMAT")});
    parser.addOption({text("out"), text("Write the report to this file."), text("FILE")});
}

QStringList reportOptionNames() {
    QStringList names{text("report"), text("format"), text("out")};
    for (const ReportOption& option : options)
        names << text(option.name);
    return names;
}

ReportOptions readReportOptions(const QCommandLineParser& parser) {
    ReportOptions result;
    ReportRequest& request = result.request;
    request.kind = kindOption(parser);
    refuseUnused(parser, request.kind);
    request.period = periodOption(parser);
    request.date = dateOption(parser, "date").value_or(QDate());
    request.start = parser.value(text("start"));
    request.hours = parser.value(text("hours"));
    request.employee = parser.value(text("employee"));
    request.group = {parser.value(text("department")), parser.value(text("shift")),
                     parser.value(text("qualification"))};
    request.order = parser.value(text("order"));
    request.groupBy = groupByOption(parser);
    requireNeeded(request);
    result.file = parser.value(text("out"));
    result.format = formatOption(parser, result.file);
    if (result.file.isEmpty() && !ReportFile::isText(result.format))
        throw UsageError{text("--format %1 needs --out.").arg(parser.value(text("format")))};
    return result;
}

} // namespace tallyroom::host
