#include "common/ui/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace tallyroom {

ElidedLabel::ElidedLabel(const QString& name, QWidget* parent) : QLabel(parent) {
    setObjectName(name);
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setLine(const QString& text) {
    setText(text);
    setToolTip(text);
}

// Wide enough to be pointed at, whatever it says.
QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance(QLatin1Char('x')) * 12,
            QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect room = contentsRect().adjusted(std::max(0, indent()), 0, 0, 0);
    style()->drawItemText(&painter, room, static_cast<int>(alignment()), palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, room.width()),
                          foregroundRole());
}

} // namespace tallyroom
