#include "common/ui/WaitPointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace tallyroom::WaitPointer {

namespace {
// The pointer stack belongs to the host's application; only our own entry may be taken off it.
bool shown = false;
} // namespace

void show() {
    if (shown)
        return;
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    shown = true;
}

void hide() {
    if (!shown)
        return;
    QGuiApplication::restoreOverrideCursor();
    shown = false;
}

} // namespace tallyroom::WaitPointer
