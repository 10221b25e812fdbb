// A report as a workbook of a spreadsheet.
#pragma once

#include "reports/Report.h"

namespace tallyroom {

// The bytes of an XLSX file: a sheet a table and a chart's points, with the title, the details, the
// user and the time above them and the headings frozen; words and notes on a sheet of their own.
// Days, times and amounts of time are numbers that are shown as such. Raises 3051 when there is no
// room for the temporary file it is made in, and for more rows than a sheet can hold.
QByteArray reportWorkbook(const Report& report, const QString& user);

} // namespace tallyroom
