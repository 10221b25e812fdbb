#include "common/ui/FormWindow.h"

#include "common/look/WindowFit.h"
#include "common/ui/Events.h"
#include "common/ui/WaitPointer.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPushButton>

namespace tallyroom {

void FormWindow::showModally() {
    ensureLoaded();
    WindowFit::fit(*this);
    exec();
}

void FormWindow::ensureLoaded() {
    if (m_loaded)
        return;
    WindowFit::grow(*this);
    Form_Load();
    m_loaded = true;
}

void FormWindow::Form_Activate() {
    WaitPointer::hide();
}

bool FormWindow::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::Show)
        Events::run(this, [this] { Form_Activate(); });
    return handled;
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    if (isEnter && button)
        button->click();
    else if (event->key() != Qt::Key_Escape)
        QDialog::keyPressEvent(event);
}

void FormWindow::done(int result) {
    Events::run(this, [this] { Form_QueryUnload(); });
    m_loaded = false;
    QDialog::done(result);
}

} // namespace tallyroom
