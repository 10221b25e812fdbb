// The screen with the overtime analysis.
#pragma once

#include "host/screens/ScreenTable.h"
#include "reports/Period.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmOvertime;
}

namespace tallyroom::host {

class frmOvertime : public QDialog {
    Q_OBJECT

public:
    // Opens on the canvass period, without one on the last two weeks in which anything was
    // recorded. The database and the data must outlive the window. Raises what reading the data
    // raises.
    frmOvertime(Database& database, const HostData& hostData, const std::optional<Period>& canvass,
                QWidget* parent);
    ~frmOvertime() override;

private:
    void refresh();

    std::unique_ptr<Ui::frmOvertime> m_ui;
    Database& m_database;
    const HostData& m_data;
    TextTableModel m_model;
};

} // namespace tallyroom::host
