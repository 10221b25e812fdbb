// What can be done with what a screen shows: copy, export, print.
#pragma once

#include "host/screens/ShownTable.h"
#include "reports/Report.h"

#include <QDialogButtonBox>
#include <functional>

namespace tallyroom::host {

class ReportCommands : public QObject {
public:
    // Adds the buttons to those of the window. `shown` makes the report of what is shown at that
    // moment. All must outlive the commands.
    ReportCommands(QWidget& window, QDialogButtonBox& buttons, const ShownTable& table,
                   const QString& user, std::function<Report()> shown);

private:
    void addButton(QDialogButtonBox& buttons, const QString& name, const QString& text,
                   std::function<void()> command);
    void exportFile();
    void print();

    QWidget& m_window;
    QString m_user;
    std::function<Report()> m_shown;
};

} // namespace tallyroom::host
