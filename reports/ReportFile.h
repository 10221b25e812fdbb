// A report as a file.
#pragma once

#include "reports/Report.h"

#include <optional>

namespace tallyroom {

enum class ReportFormat { Text, Csv, Workbook, Pdf, Picture };

namespace ReportFile {

// By the names "text", "csv", "xlsx", "pdf", "png".
std::optional<ReportFormat> formatNamed(const QString& name);
// By a file's suffix: ".txt" and the like.
std::optional<ReportFormat> formatOf(const QString& fileName);
QStringList formatNames();
// Whether it can be shown on a terminal as well.
bool isText(ReportFormat format);

// The bytes of a format that is text.
QByteArray text(const Report& report, ReportFormat format);

// Writes the file whole or leaves what was there. A picture is one of each page: the second page
// goes to "FILE-2.png" where the first goes to "FILE.png", and replaces another file only where the
// first does. Raises 3051 with the file's name when it cannot be written. Pages need a
// QGuiApplication.
void write(const Report& report, ReportFormat format, const QString& fileName, const QString& user);

} // namespace ReportFile
} // namespace tallyroom
