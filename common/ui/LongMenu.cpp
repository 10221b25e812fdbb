#include "common/ui/LongMenu.h"

#include <QMenu>
#include <QProxyStyle>

namespace tallyroom {

namespace {

class ScrollingStyle : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override {
        return hint == SH_Menu_Scrollable ? 1
                                          : QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

} // namespace

void letScroll(QMenu* menu) {
    auto* style = new ScrollingStyle;
    style->setParent(menu);
    menu->setStyle(style);
}

} // namespace tallyroom
