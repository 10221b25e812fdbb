// The options of --report.
#pragma once

#include "host/OptionReading.h"
#include "reports/ReportFile.h"
#include "reports/ReportRequest.h"

namespace tallyroom::host {

struct ReportOptions {
    ReportRequest request;
    ReportFormat format = ReportFormat::Text;
    QString file; // empty for the standard output
};

void addReportOptions(QCommandLineParser& parser);

// Their names, but for those that other commands have as well.
QStringList reportOptionNames();

// Throws UsageError, also for an option that the kind of report has no use for.
ReportOptions readReportOptions(const QCommandLineParser& parser);

} // namespace tallyroom::host
