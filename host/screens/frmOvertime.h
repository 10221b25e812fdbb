// The screen with the overtime analysis.
#pragma once

#include "host/screens/Period.h"
#include "host/screens/ScreenTable.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmOvertime;
}

namespace tallyroom::host {

class frmOvertime : public QDialog {
    Q_OBJECT

public:
    // Both must outlive the window. Raises what reading the data raises.
    frmOvertime(Database& database, const HostData& hostData, QWidget* parent);
    ~frmOvertime() override;

private:
    void refresh();

    std::unique_ptr<Ui::frmOvertime> m_ui;
    Database& m_database;
    const HostData& m_data;
    TextTableModel m_model;
};

} // namespace tallyroom::host
