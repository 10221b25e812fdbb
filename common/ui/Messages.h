// The only place that makes message boxes.
#pragma once

#include "common/RunError.h"

#include <QMessageBox>
#include <QString>

namespace tallyroom::Messages {

// Title of the boxes that carry none of their own.
QString applicationTitle();

// Shows a modal box and returns the button pressed. A question that has to be answered (Yes and
// No; Abort, Retry and Ignore) is closed by its buttons only, not by Esc or the window's frame. The
// wait pointer is gone from then on; who works on after the answer shows it again.
QMessageBox::StandardButton show(QWidget* parent, const QString& text, QMessageBox::Icon icon,
                                 QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                 const QString& title = applicationTitle());

// The old run time's message for an error that no routine handled.
void showRunTimeError(QWidget* parent, const RunError& error);

} // namespace tallyroom::Messages
