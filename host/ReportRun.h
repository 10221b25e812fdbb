// A report from the command line.
#pragma once

#include "host/ReportOptions.h"

namespace tallyroom::host {

// Makes the report and writes it. Errors go to standard error. Returns the exit code; see
// helpText(). Needs a QGuiApplication, but no display.
int runReport(const QString& dataFolder, const QString& user, const ReportOptions& options);

} // namespace tallyroom::host
