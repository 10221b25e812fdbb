// Statements that write the scratch table.
#pragma once

#include <QString>
#include <QStringList>

namespace tallyroom::CanvassStatements {

// Empties the scratch table; runs on vrlxdb01.mdb.
QString deleteRows();

// Copies the selected employees into it; runs on bcx.mdb. `filter` is the host's: what completes
// the condition "[Emp_Code] ".
QString insertEmployees(const QString& dataPath, const QString& filter);

// All its rows.
QString allRows();

// The rows and columns that take the totals, by code; positions are those of the totals query.
QString mergedColumns();

// What follows the merge: zeros for missing figures, which change nothing, and the two weighed
// columns.
QStringList finish();

} // namespace tallyroom::CanvassStatements
