// Remembered options: what a file holds in place of what a window left there.
#include "common/ui/FormOptions.h"
#include "fuzz/Fuzz.h"

#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>

using namespace tallyroom;

namespace {

// Has the controls of the audit browser.
struct Browser {
    Browser() {
        window.setObjectName(QStringLiteral("frmTLYRAudit"));
        panel.setObjectName(QStringLiteral("SSPanel1"));
        (new QRadioButton(&panel))->setObjectName(QStringLiteral("Option1"));
        (new QRadioButton(&panel))->setObjectName(QStringLiteral("Option2"));
        for (int number = 3; number <= 6; ++number)
            (new QCheckBox(&window))->setObjectName(QStringLiteral("Check%1").arg(number));
    }
    QWidget window;
    QWidget panel{&window};
};

void makeApplication() {
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static const QApplication application(count, arguments);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    makeApplication();
    Browser first;
    FormOptions::restore(first.window, QString::fromUtf8(bytesOf(data, size)));
    const QString text = FormOptions::textOf(first.window);
    Browser second;
    FormOptions::restore(second.window, text);
    require(FormOptions::textOf(second.window) == text, "a window opens as it was left");
    return 0;
}
