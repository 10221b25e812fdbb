// The host's splash picture behind a window's controls.
#pragma once

#include "common/Objects.h"

#include <QObject>
#include <QPixmap>
#include <QWidget>

namespace tallyroom {

// Draws a picture at the upper left corner of a widget, unscaled, as a form draws its background.
// Where text could not be read on the picture, the desktop's own ground lies over it as a veil,
// just dense enough, and follows the desktop when it changes its colours. Owned by the widget.
class Background : public QObject {
    Q_OBJECT

public:
    // Takes the `Picture` of the host's picture box (the bytes of an image file; none gives no
    // background), and gives the widget and its controls colours that are told apart on it. Raises
    // what the host raises, 481 when the bytes are no image.
    static void copyFrom(const ObjectRef& splashPicture, QWidget* widget);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Background(QWidget& widget, QImage splash);
    void giveColours();

    QWidget& m_widget;
    QImage m_splash; // as the host has it; null for none
    QPixmap m_shown;
    bool m_isGiving = false; // which changes the palette as well
};

} // namespace tallyroom
