#include "host/ReportRun.h"

#include "common/RunError.h"
#include "host/ExitCodes.h"
#include "host/HostMessages.h"
#include "reports/Reports.h"

#include <QTextStream>

namespace tallyroom::host {

namespace {

// What cannot be written is a matter of the command line; all else is the data's.
void write(const Report& report, const QString& user, const ReportOptions& options) {
    if (options.file.isEmpty()) {
        QTextStream(stdout) << QString::fromUtf8(ReportFile::text(report, options.format));
        return;
    }
    try {
        ReportFile::write(report, options.format, options.file, user);
    } catch (const RunError& error) {
        throw BadRequest{error.description()};
    }
}

} // namespace

int runReport(const QString& dataFolder, const QString& user, const ReportOptions& options) {
    try {
        const Report report = Reports::make(dataFolder, options.request);
        write(report, user, options);
        return report.findings > 0 ? exitFindings : exitSuccess;
    } catch (const BadRequest& request) {
        printError(request.text);
        return exitUsage;
    } catch (const RunError& error) {
        printError(QStringLiteral("error %1: %2").arg(error.number()).arg(error.description()));
        return exitUnreadable;
    }
}

} // namespace tallyroom::host
