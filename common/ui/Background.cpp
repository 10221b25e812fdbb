#include "common/ui/Background.h"

#include "common/RunError.h"
#include "common/look/Contrast.h"
#include "common/look/Veil.h"

#include <QEvent>
#include <QPainter>

namespace tallyroom {

void Background::copyFrom(const ObjectRef& splashPicture, QWidget* widget) {
    const Variant picture = splashPicture.property(QStringLiteral("Picture"));
    widget->setPalette(Contrast::readable(widget->palette()));
    if (picture.isEmpty() || picture.isNull()) {
        Contrast::giveTo(*widget, widget->palette().color(QPalette::Window));
        return;
    }
    const QImage image = QImage::fromData(picture.toBytes());
    if (image.isNull())
        throw RunError::make(ErrorNumber::invalidPicture);
    const Veiled veil = veiled(image, widget->palette());
    new Background(widget, QPixmap::fromImage(veil.picture));
    Contrast::giveTo(*widget, veil.behind);
}

Background::Background(QWidget* widget, QPixmap picture)
    : QObject(widget), m_picture(std::move(picture)) {
    widget->installEventFilter(this);
}

bool Background::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        QPainter painter(static_cast<QWidget*>(watched));
        painter.drawPixmap(0, 0, m_picture);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tallyroom
