// The look of a field whose content has to be corrected.
#pragma once

#include <QLineEdit>

namespace tallyroom {

inline constexpr const char* untilCorrected = "untilCorrected"; // a property of such boxes

// Paints the box in the red that the old run time's palette has at place 12, for as long as the
// window lives.
inline void markWrong(QLineEdit* box) {
    box->setProperty(untilCorrected, false);
    box->setStyleSheet(QStringLiteral("QLineEdit { background-color: #ff0000; color: #000000; }"));
}

// Likewise, until markCorrected.
inline void markUntilCorrected(QLineEdit* box) {
    if (!box->styleSheet().isEmpty())
        return;
    markWrong(box);
    box->setProperty(untilCorrected, true);
}

inline void markCorrected(QLineEdit* box) {
    if (box->property(untilCorrected).toBool())
        box->setStyleSheet(QString());
}

} // namespace tallyroom
