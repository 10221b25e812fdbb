// The screen with the time and attendance transactions.
#pragma once

#include "host/screens/ScreenTable.h"
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
    // Both must outlive the window. Raises what reading the data raises.
    frmTransactions(Database& database, const HostData& hostData, QWidget* parent);
    ~frmTransactions() override;

private:
    void setUpChoices();
    void refresh();

    std::unique_ptr<Ui::frmTransactions> m_ui;
    Database& m_database;
    const HostData& m_data;
    TextTableModel m_model;
};

} // namespace tallyroom::host
