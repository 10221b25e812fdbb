#include "host/ReportRun.h"

#include "common/RunError.h"
#include "host/ExitCodes.h"
#include "host/HostMessages.h"
#include "host/oldfiles/OldCopy.h"
#include "reports/Reports.h"

#include <cstdio>

namespace tallyroom::host {

namespace {

void print(const QByteArray& text) {
    const auto size = static_cast<std::size_t>(text.size());
    const bool isWritten =
        std::fwrite(text.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
    if (!isWritten)
        throw BadRequest{QStringLiteral("The report could not be written.")};
}

// What cannot be written is a matter of the command line; all else is the data's.
void write(const Report& report, const QString& user, const ReportOptions& options) {
    if (options.file.isEmpty())
        return print(ReportFile::text(report, options.format));
    try {
        ReportFile::write(report, options.format, options.file, user);
    } catch (const RunError& error) {
        throw BadRequest{error.description()};
    }
}

} // namespace

int runReport(const QString& dataFolder, const QString& user, const ReportOptions& options) {
    try {
        refuseOldFolder(dataFolder);
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
