#include "common/ui/Background.h"

#include "common/RunError.h"
#include "common/look/Contrast.h"
#include "common/look/Veil.h"

#include <QEvent>
#include <QPainter>

namespace tallyroom {

void Background::copyFrom(const ObjectRef& splashPicture, QWidget* widget) {
    const Variant picture = splashPicture.property(QStringLiteral("Picture"));
    const bool isThere = !picture.isEmpty() && !picture.isNull();
    const QImage image = isThere ? QImage::fromData(picture.toBytes()) : QImage();
    if (isThere && image.isNull())
        throw RunError::make(ErrorNumber::invalidPicture);
    new Background(*widget, image);
}

Background::Background(QWidget& widget, QImage splash)
    : QObject(&widget), m_widget(widget), m_splash(std::move(splash)) {
    giveColours();
    m_widget.installEventFilter(this);
}

void Background::giveColours() {
    m_isGiving = true;
    m_widget.setPalette(QPalette()); // the desktop's
    m_widget.setPalette(Contrast::readable(m_widget.palette()));
    QColor behind = m_widget.palette().color(QPalette::Window);
    if (!m_splash.isNull()) {
        const Veiled veil = veiled(m_splash, m_widget.palette());
        m_shown = QPixmap::fromImage(veil.picture);
        behind = veil.behind;
    }
    Contrast::giveTo(m_widget, behind);
    m_isGiving = false;
}

bool Background::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        QPainter(&m_widget).drawPixmap(0, 0, m_shown);
    } else if (event->type() == QEvent::PaletteChange && !m_isGiving) {
        giveColours();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tallyroom
