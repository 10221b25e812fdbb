#include "host/HostMessages.h"

#include <QMessageBox>
#include <QTextStream>

namespace tallyroom::host {

void printError(const QString& text) {
    QTextStream(stderr) << QStringLiteral("brightclock: ") << text << '\n';
}

void showError(const RunError& error, QWidget* parent) {
    QMessageBox box(QMessageBox::Critical, QStringLiteral("Brightclock"),
                    QStringLiteral("Error %1\n\n%2").arg(error.number()).arg(error.description()),
                    QMessageBox::Ok, parent);
    box.setObjectName(QStringLiteral("HostError"));
    box.exec();
}

void runCommand(QWidget* parent, const std::function<void()>& command) {
    try {
        command();
    } catch (const RunError& error) {
        showError(error, parent);
    }
}

} // namespace tallyroom::host
