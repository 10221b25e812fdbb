#include "reports/Checks.h"

#include "reports/CheckFamilies.h"
#include "store/Workspace.h"

namespace tallyroom {

namespace {

ValueTable tableOf(const Check& check, const CheckedData& data) {
    ValueTable table{QStringLiteral("%1: %2").arg(check.caption).arg(check.findings.size()),
                     {{QStringLiteral("Date"), ValueKind::Day},
                      {QStringLiteral("Code")},
                      {QStringLiteral("Name"), ValueKind::Text, true},
                      {QStringLiteral("What"), ValueKind::Text, true},
                      {QStringLiteral("What to do"), ValueKind::Text, true}},
                     {}};
    for (const Finding& finding : check.findings) {
        const Employee* employee = data.employee(finding.code);
        table.rows.push_back({finding.day, finding.code.trimmed(),
                              employee ? employee->name : QString(), finding.what, finding.remedy});
    }
    return table;
}

void addTables(Report& report, const Findings& findings, const CheckedData& data) {
    QStringList clean;
    for (const Check& check : findings.checks) {
        report.findings += static_cast<int>(check.findings.size());
        if (check.findings.empty())
            clean << check.caption.at(0).toLower() + check.caption.mid(1);
        else
            report.tables.push_back(tableOf(check, data));
    }
    report.words << (report.findings == 0 ? QStringLiteral("Nothing was found.")
                                          : QStringLiteral("%1 to look at.").arg(report.findings));
    if (!clean.isEmpty())
        report.notes << QStringLiteral("Found none of these: ") + clean.join(QStringLiteral("; ")) +
                            u'.';
    report.notes << findings.notes;
}

} // namespace

QString listed(const QStringList& names) {
    constexpr qsizetype most = 3;
    const QString first = names.mid(0, most).join(QStringLiteral(", "));
    return names.size() <= most ? first
                                : first + QStringLiteral(" and %1 others").arg(names.size() - most);
}

Report checksReport(const QString& dataFolder, const ReportRequest& request,
                    const ReportProgress& progress) {
    const auto host = Workspace::openHostOptions(dataFolder);
    const auto addIn = Workspace::openAddIn(dataFolder);
    const auto data =
        readCheckedData(dataFolder, *host, *addIn,
                        request.period ? *request.period : recordingDays(*addIn), progress);
    Findings findings;
    findings.notes = data->notes;
    checkAnswers(*data, findings);
    checkTurns(*data, *addIn, findings, progress);
    checkTransactions(*data, findings);
    checkCodes(*data, *host, *addIn, findings);
    Report report;
    report.title = QStringLiteral("Checks");
    report.details << QStringLiteral("Answers recorded from %1 to %2")
                          .arg(shownDay(data->recorded.from), shownDay(data->recorded.to));
    addTables(report, findings, *data);
    return report;
}

} // namespace tallyroom
