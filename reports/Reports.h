// All reports, by their kind.
#pragma once

#include "reports/Report.h"
#include "reports/ReportRequest.h"

#include <optional>

namespace tallyroom::Reports {

// "standing", "calls", "checks", "fairness"
QString nameOf(ReportKind kind);
std::optional<ReportKind> named(const QString& name);
QStringList names();

// Reads what the report needs and makes it. Raises what the database raises; throws BadRequest, and
// Cancelled.
Report make(const QString& dataFolder, const ReportRequest& request,
            const ReportProgress& progress = {});

} // namespace tallyroom::Reports
