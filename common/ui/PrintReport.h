// Printing a report.
#pragma once

#include "common/pages/PageSource.h"

#include <QWidget>

namespace tallyroom {

// Asks whether the report is to be printed, then shows it in a preview from which it goes to a
// printer or into a PDF file. Leaving either writes nothing. What cannot be written is reported.
void printReport(QWidget* parent, const PageSource& report);

// The preview alone. Returns a sentence about what could not be written, or "".
QString previewReport(QWidget* parent, const PageSource& report);

} // namespace tallyroom
