// The screen with the time and attendance transactions.
#pragma once

#include "host/screens/ReportCommands.h"
#include "host/screens/ScreenContext.h"
#include "reports/Period.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmTransactions;
}

namespace tallyroom::host {

class frmTransactions : public QDialog {
    Q_OBJECT

public:
    // Raises what reading the data raises.
    frmTransactions(const ScreenContext& context, QWidget* parent);
    ~frmTransactions() override;

private:
    void setUpChoices();
    void refresh();
    Period period() const;
    Report report() const; // of what is shown

    std::unique_ptr<Ui::frmTransactions> m_ui;
    ScreenContext m_context;
    std::unique_ptr<ShownTable> m_table;
    std::unique_ptr<ReportCommands> m_commands;
};

} // namespace tallyroom::host
