#include "bench/BoardWindow.h"

#include "bench/BenchData.h"
#include "common/ui/TextWidths.h"

#include <QAction>
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

void showEverything(Tallyroom& window) {
    for (const char* option : {"mnuPos", "mnuSenNum", "mnuBreakOut", "mnuAltPhone", "mnuCellPhone",
                               "mnuPager", "MnuOrder_3"}) {
        auto& action = child<QAction>(window, option);
        if (!action.isChecked()) // remembered from the run before
            action.trigger();
    }
}

QStringList codesOf(const Grid& grid) {
    QStringList result;
    for (int row = 1; row < grid.rows(); ++row)
        result << grid.text(row, 0);
    return result;
}

void forgetWidths() {
    delete qApp->findChild<TextWidths*>();
}

} // namespace tallyroom::bench
