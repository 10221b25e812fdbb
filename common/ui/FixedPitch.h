// A fixed-pitch font for lists whose texts line up in columns.
#pragma once

#include <QWidget>

namespace tallyroom {

inline void useFixedPitch(QWidget* widget) {
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    widget->setFont(font);
}

} // namespace tallyroom
