#include "common/ui/Background.h"

#include "common/RunError.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>
#include <cstdlib>

namespace tallyroom {

namespace {

// `share` of the one, the rest of the other.
QColor mixed(const QColor& one, const QColor& other, double share) {
    const auto mix = [share](int first, int second) {
        return qRound(share * first + (1 - share) * second);
    };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()),
            mix(one.blue(), other.blue())};
}

// What the eye sees of the picture on that ground, all in all.
QColor averageOf(const QPixmap& picture, const QColor& ground) {
    const QColor average = picture.toImage()
                               .scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                               .pixelColor(0, 0);
    return mixed(average, ground, average.alphaF());
}

QPalette written(QPalette palette, const QColor& ground, const QColor& text) {
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, text);
    return palette;
}

// A dark desktop writes in white, which cannot be read on a light picture, and the other way round.
// Then labels are written in the opposite, and what the picture leaves free takes its colour; lists
// have a ground of their own.
void keepReadable(QWidget* widget, const QPixmap& pixmap) {
    constexpr int readable = 110; // of 255 steps of grey between text and ground
    const QPalette desktop = widget->palette();
    const QColor ground = desktop.color(QPalette::Window);
    const QColor picture = averageOf(pixmap, ground);
    const int grey = qGray(picture.rgb());
    if (std::abs(qGray(desktop.color(QPalette::WindowText).rgb()) - grey) >= readable)
        return;
    const QColor text = grey < 128 ? Qt::white : Qt::black;
    QPalette palette = written(desktop, picture, text);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, mixed(text, picture, 0.5));
    widget->setPalette(palette);
    widget->setAutoFillBackground(true);
    for (auto* list : widget->findChildren<QAbstractScrollArea*>())
        list->setPalette(written(desktop, ground, desktop.color(QPalette::WindowText)));
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
    keepReadable(widget, pixmap);
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
