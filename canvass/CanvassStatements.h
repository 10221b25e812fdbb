// The statements of the totals build, in the order in which it runs them.
#pragma once

#include "setup/TotallingPeriod.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace tallyroom::CanvassStatements {

// `filter` is the host's selection, which completes "[emp_code] ".
QString insertEmployees(const QString& dataPath, const QString& filter);
// The totals over the host's history, a row for each employee who has any.
QString totals(const QString& filter, const std::optional<TotallingPeriod>& period);
// What follows once the totals are in tlyrTemp.
QStringList finish();
// The columns of tlyrTemp that are computed from others; `multiply` weighs each hour by its rate.
QStringList deriveColumns(bool multiply);

} // namespace tallyroom::CanvassStatements
