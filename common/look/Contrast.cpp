#include "common/look/Contrast.h"

#include <QPainter>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

namespace tallyroom::Contrast {

namespace {

double linear(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

// As light as it may be, so that a window keeps its face: some grey between ground and text.
QColor edgeOn(const std::vector<QColor>& grounds, const QColor& text) {
    constexpr double reserve = 0.2; // for what the screen's rounding and smoothing take away
    for (double share = 0.3; share < 1; share += 0.05) {
        const QColor edge = mixed(text, grounds.front(), share);
        const auto isSeen = [&edge](const QColor& ground) {
            return ratio(edge, ground) >= ofControls + reserve;
        };
        if (std::all_of(grounds.begin(), grounds.end(), isSeen))
            return edge;
    }
    return text;
}

// A style that only stands before another has no name of its own.
QString nameOfStyle() {
    const QStyle* style = QApplication::style();
    while (const auto* proxy = qobject_cast<const QProxyStyle*>(style))
        style = proxy->baseStyle();
    return style->name();
}

// In strips: where the screen scales its pixels, half of a line would fall outside the place.
void drawFrame(QPainter& painter, const QRect& place, const QColor& color, int width) {
    const QRect inside = place.adjusted(width, width, -width, -width);
    for (const QRect& strip : QRegion(place) - QRegion(inside))
        painter.fillRect(strip, color);
}

void drawRing(QPainter& painter, const QRect& place, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 2));
    painter.drawEllipse(QRectF(place).adjusted(1, 1, -1, -1));
    painter.restore();
}

// One pixel wide, as rows of a list leave no room between it and the text. The style says what it
// is drawn on only where rows may be selected.
void drawFocus(const QStyleOption& option, QPainter& painter) {
    const bool isSelected = option.state & QStyle::State_Selected;
    const auto* focus = qstyleoption_cast<const QStyleOptionFocusRect*>(&option);
    const bool onHighlight = isSelected || (focus && focus->backgroundColor ==
                                                         option.palette.color(QPalette::Highlight));
    drawFrame(painter, option.rect,
              option.palette.color(onHighlight ? QPalette::HighlightedText : QPalette::WindowText),
              1);
}

// Watches for the desktop's colours.
class Giver : public QObject {
public:
    explicit Giver(QApplication& application) : QObject(&application) {
        application.installEventFilter(this);
        give();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == parent() && event->type() == QEvent::ApplicationPaletteChange && !m_isGiving)
            give();
        return QObject::eventFilter(watched, event);
    }

private:
    void give() {
        m_isGiving = true;
        const QPalette palette = readable(QApplication::palette());
        QApplication::setPalette(palette);
        QApplication::setStyle(new Style(palette, palette.color(QPalette::Window)));
        m_isGiving = false;
    }

    bool m_isGiving = false; // which is a change as well
};

} // namespace

double ratio(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor mixed(const QColor& one, const QColor& other, double share) {
    const auto mix = [share](int first, int second) {
        return qRound(share * first + (1 - share) * second);
    };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()),
            mix(one.blue(), other.blue())};
}

QColor apartFrom(const QColor& ground, const QColor& color, double wanted) {
    const QColor end = ratio(Qt::white, ground) > ratio(Qt::black, ground) ? Qt::white : Qt::black;
    QColor result = color;
    constexpr int steps = 20;
    for (int step = 1; ratio(result, ground) < wanted && step <= steps; ++step)
        result = mixed(end, color, static_cast<double>(step) / steps);
    return result;
}

QPalette readable(QPalette palette) {
    using Role = QPalette::ColorRole;
    constexpr std::pair<Role, Role> pairs[] = {{QPalette::WindowText, QPalette::Window},
                                               {QPalette::Text, QPalette::Base},
                                               {QPalette::ButtonText, QPalette::Button},
                                               {QPalette::PlaceholderText, QPalette::Base},
                                               {QPalette::Highlight, QPalette::HighlightedText}};
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        for (const auto& [moved, ground] : pairs) {
            QColor color = palette.color(group, moved);
            if (color.alpha() < 255)
                color = mixed(color, palette.color(group, ground), color.alphaF());
            palette.setColor(group, moved, apartFrom(palette.color(group, ground), color, ofText));
        }
    }
    return palette;
}

Style::Style(const QPalette& palette, const QColor& behind)
    : QProxyStyle(nameOfStyle()),
      m_edge(edgeOn({palette.color(QPalette::Window), palette.color(QPalette::Base),
                     palette.color(QPalette::Button), behind},
                    palette.color(QPalette::WindowText))) {}

void Style::drawEdge(const QStyleOption& option, QPainter& painter) const {
    const bool isFocused = option.state & State_HasFocus;
    drawFrame(painter, option.rect, isFocused ? option.palette.color(QPalette::WindowText) : m_edge,
              isFocused ? 2 : 1);
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    if (element == PE_FrameFocusRect) {
        drawFocus(*option, *painter);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        drawFrame(*painter, option->rect, m_edge, 1);
        break;
    case PE_IndicatorRadioButton:
        drawRing(*painter, option->rect, m_edge);
        break;
    case PE_Frame:
    case PE_FrameLineEdit:
    case PE_PanelButtonCommand:
        drawEdge(*option, *painter);
        break;
    default:
        break;
    }
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                               QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox || control == CC_SpinBox)
        drawEdge(*option, *painter);
}

void giveTo(QWidget& window, const QColor& behind) {
    window.setPalette(readable(window.palette()));
    const Style* before = window.findChild<Style*>(QString(), Qt::FindDirectChildrenOnly);
    auto* style = new Style(window.palette(), behind);
    style->setParent(&window);
    for (auto* control : window.findChildren<QWidget*>())
        control->setStyle(style);
    delete before;
}

void giveToAll(QApplication& application) {
    new Giver(application);
}

} // namespace tallyroom::Contrast
