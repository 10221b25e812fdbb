// Colours that can be told apart: text from its ground, controls and the focus from what is around.
#pragma once

#include <QApplication>
#include <QPalette>
#include <QProxyStyle>
#include <QWidget>

namespace tallyroom::Contrast {

inline constexpr double ofText = 4.5;
inline constexpr double ofControls = 3.0;

// The ratio of two opaque colours, 1 to 21, by the formula of WCAG 2.1 ("contrast ratio" and
// "relative luminance", https://www.w3.org/TR/WCAG21/#dfn-contrast-ratio).
double ratio(const QColor& one, const QColor& other);

// `share` of the one, the rest of the other.
QColor mixed(const QColor& one, const QColor& other, double share);

// The colour, moved as far towards white or black as it takes to reach that ratio on the ground.
QColor apartFrom(const QColor& ground, const QColor& color, double wanted);

// The palette with every text readable on its ground, selected rows included.
QPalette readable(QPalette palette);

// Draws what the application's style draws, and controls with an edge, the focus with a frame that
// can be seen on all the grounds that they may lie on.
class Style : public QProxyStyle {
    Q_OBJECT

public:
    Style(const QPalette& palette, const QColor& behind);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

private:
    void drawEdge(const QStyleOption& option, QPainter& painter) const;

    QColor m_edge;
};

// Gives a window and the controls that it has these colours, in the place of those given before.
// `behind` is what lies behind the controls at its worst.
void giveTo(QWidget& window, const QColor& behind);

// Gives them to the application's windows, and anew whenever the desktop changes its own. To be
// called once.
void giveToAll(QApplication& application);

} // namespace tallyroom::Contrast
