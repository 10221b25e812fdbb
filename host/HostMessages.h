// The host's message boxes, and its lines on standard error.
#pragma once

#include "common/RunError.h"

#include <functional>

class QWidget;

namespace tallyroom::host {

void printError(const QString& text);
void showError(const RunError& error, QWidget* parent);

// Runs what a control starts; an error is shown and ends it, since nothing may be thrown through
// the event loop.
void runCommand(QWidget* parent, const std::function<void()>& command);

} // namespace tallyroom::host
