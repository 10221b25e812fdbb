#include "bench/BoardWindow.h"

#include "bench/BenchData.h"
#include "common/ui/TextWidths.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <exception>

namespace tallyroom::bench {

void withBoard(const QString& folder, const std::function<void(Tallyroom&)>& use) {
    const HostContext context = hostOf(folder);
    Tallyroom window(context);
    std::exception_ptr failure;
    QTimer::singleShot(0, &window, [&] {
        try {
            use(window);
        } catch (...) {
            failure = std::current_exception();
        }
        child<QPushButton>(window, "Command1").click();
    });
    window.showModally();
    if (failure)
        std::rethrow_exception(failure);
}

void forgetWidths() {
    delete qApp->findChild<TextWidths*>();
}

} // namespace tallyroom::bench
