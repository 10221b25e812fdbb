// Remembered options: what a file holds in place of what a window left there.
#include "fuzz/Fuzz.h"
#include "tests/support/RememberingWindow.h"

#include <QApplication>

using namespace tallyroom;

namespace {

void makeApplication() {
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static const QApplication application(count, arguments);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    makeApplication();
    RememberingWindow first;
    first.restore(QString::fromUtf8(bytesOf(data, size)));
    const QString text = first.text();
    RememberingWindow second;
    second.restore(text);
    require(second.text() == text, "a window opens as it was left");
    return 0;
}
