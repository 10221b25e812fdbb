#include "reports/CallOutcome.h"

#include "audit/Standing.h"
#include "common/RunError.h"
#include "reports/CallSheet.h"

namespace tallyroom {

void recordOutcome(const QString& dataFolder, const ReportRequest& request, const Row& line,
                   const QString& user, Contacts::Outcome outcome, const QString& remark) {
    try {
        Contacts::record(dataFolder, {Dates::now(), user, line[callSheetCode].textOrEmpty(),
                                      Dates::fromQDate(request.date), outcome, remark.trimmed()});
    } catch (const RunError& error) {
        if (!Standing::isMissing(error.number()))
            throw;
        throw RunError(error.number(),
                       QStringLiteral("This data has no place for what comes of calls. "
                                      "\"brightclock --upgrade\" adds it."),
                       error.source());
    }
}

} // namespace tallyroom
