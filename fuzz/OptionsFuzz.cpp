// Remembered options: what a file holds in place of what a window left there.
#include "common/ui/WindowMemory.h"
#include "fuzz/Fuzz.h"

#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>

using namespace tallyroom;

namespace {

// A window that remembers what the audit browser does.
struct Browser {
    Browser() {
        window.setObjectName(QStringLiteral("frmTLYRAudit"));
        panel.setObjectName(QStringLiteral("SSPanel1"));
        (new QRadioButton(&panel))->setObjectName(QStringLiteral("Option1"));
        (new QRadioButton(&panel))->setObjectName(QStringLiteral("Option2"));
        for (int number = 3; number <= 6; ++number)
            (new QCheckBox(&window))->setObjectName(QStringLiteral("Check%1").arg(number));
    }
    WindowMemory::Remembered remembered() {
        WindowMemory::Remembered controls{&panel, &window};
        for (QCheckBox* box : window.findChildren<QCheckBox*>())
            controls.push_back(box);
        return controls;
    }
    void restore(const QString& text) { WindowMemory::restore(window, remembered(), text); }
    QString text() { return WindowMemory::textOf(window, remembered()); }

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
    first.restore(QString::fromUtf8(bytesOf(data, size)));
    const QString text = first.text();
    Browser second;
    second.restore(text);
    require(second.text() == text, "a window opens as it was left");
    return 0;
}
