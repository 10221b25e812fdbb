#include "host/BoardWatch.h"

#include <QApplication>
#include <QEvent>

namespace tallyroom::host {

BoardWatch::BoardWatch() {
    qApp->installEventFilter(this);
}

bool BoardWatch::isBoard(const QObject& object) {
    return object.isWidgetType() && object.objectName() == QLatin1String("Tallyroom");
}

bool BoardWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint && isBoard(*watched)) {
        m_board = static_cast<QWidget*>(watched);
        m_wasSeen = true;
    }
    return false;
}

} // namespace tallyroom::host
