#include "common/ui/FormWindow.h"

#include <QScreen>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tallyroom;

namespace {

// Remembers a size from a larger screen, and the one that it is shown in.
class LargeWindow : public FormWindow {
public:
    QSize shown;

protected:
    void Form_Load() override {
        resize(20000, 15000);
        QTimer::singleShot(0, this, [this] {
            shown = size();
            reject();
        });
    }
};

TEST(FormWindow, FitsTheScreenWithItsFrame) {
    LargeWindow window;
    window.showModally();
    const QSize screen = window.screen()->availableSize();
    EXPECT_GT(window.shown.height(), screen.height() / 2);
    EXPECT_LT(window.shown.height(), screen.height() - 20) << "room for a title bar";
    EXPECT_LT(window.shown.width(), screen.width());
}

} // namespace
