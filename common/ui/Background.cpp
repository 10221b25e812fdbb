#include "common/ui/Background.h"

#include "common/RunError.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>
#include <cstdlib>

namespace tallyroom {

namespace {

QColor averageOf(const QPixmap& picture) {
    return picture.toImage()
        .scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .pixelColor(0, 0);
}

QPalette written(QPalette palette, const QColor& ground, const QColor& text) {
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, text);
    return palette;
}

// A dark desktop writes in white, which cannot be read on a light picture, and the other way round.
// Then labels are written in the opposite, and what the picture leaves free takes its colour; lists
// have a ground of their own.
void keepReadable(QWidget* widget, const QColor& picture) {
    constexpr int readable = 110; // of 255 steps of lightness between text and ground
    const QPalette desktop = widget->palette();
    if (std::abs(desktop.color(QPalette::WindowText).lightness() - picture.lightness()) >= readable)
        return;
    const QColor text = picture.lightness() < 128 ? Qt::white : Qt::black;
    QPalette palette = written(desktop, picture, text);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, Qt::gray);
    widget->setPalette(palette);
    for (auto* list : widget->findChildren<QAbstractScrollArea*>())
        list->setPalette(
            written(desktop, desktop.color(QPalette::Window), desktop.color(QPalette::WindowText)));
}

} // namespace

void Background::copyFrom(const ObjectRef& splashPicture, QWidget* widget) {
    const Variant picture = splashPicture.property(QStringLiteral("Picture"));
    if (picture.isEmpty() || picture.isNull())
        return;
    QPixmap pixmap;
    if (!pixmap.loadFromData(picture.toBytes()))
        throw RunError::make(ErrorNumber::invalidPicture);
    new Background(widget, pixmap);
    keepReadable(widget, averageOf(pixmap));
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
