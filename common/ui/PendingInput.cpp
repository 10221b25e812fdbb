#include "common/ui/PendingInput.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

namespace tallyroom::PendingInput {

namespace {

// While the queue is emptied no command may begin, by hand or by the clock. A timer whose event is
// held back comes again.
class Barrier : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
        case QEvent::InputMethod:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::Close:
        case QEvent::Timer:
            return true;
        default:
            return false;
        }
    }
};

} // namespace

void drop() {
    Barrier barrier;
    QCoreApplication::instance()->installEventFilter(&barrier);
    QCoreApplication::processEvents();
}

} // namespace tallyroom::PendingInput
