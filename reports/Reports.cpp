#include "reports/Reports.h"

#include "reports/CallSheet.h"
#include "reports/Checks.h"
#include "reports/Fairness.h"
#include "reports/StandingReport.h"

#include <algorithm>

namespace tallyroom::Reports {

namespace {

using MakeReport = Report (*)(const QString&, const ReportRequest&, const ReportProgress&);

struct Known {
    ReportKind kind;
    const char16_t* name;
    MakeReport make;
};

constexpr Known all[] = {
    {ReportKind::Standing, u"standing", standingReport},
    {ReportKind::Calls, u"calls", callSheet},
    {ReportKind::Checks, u"checks", checksReport},
    {ReportKind::Fairness, u"fairness", fairnessReport},
};

const Known& known(ReportKind kind) {
    return *std::ranges::find(all, kind, &Known::kind);
}

} // namespace

QString nameOf(ReportKind kind) {
    return QString::fromUtf16(known(kind).name);
}

std::optional<ReportKind> named(const QString& name) {
    const auto found = std::ranges::find_if(
        all, [&](const Known& each) { return name == QString::fromUtf16(each.name); });
    return found == std::end(all) ? std::nullopt : std::optional(found->kind);
}

QStringList names() {
    QStringList result;
    for (const Known& each : all)
        result << QString::fromUtf16(each.name);
    return result;
}

Report make(const QString& dataFolder, const ReportRequest& request,
            const ReportProgress& progress) {
    return known(request.kind).make(dataFolder, request, progress);
}

} // namespace tallyroom::Reports
