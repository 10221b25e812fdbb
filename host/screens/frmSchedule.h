// The screen with the schedule of a day, a week or a month.
#pragma once

#include "host/screens/ScheduleTable.h"
#include "host/screens/ScreenTable.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmSchedule;
}

namespace tallyroom::host {

class frmSchedule : public QDialog {
    Q_OBJECT

public:
    // Both must outlive the window. Raises what reading the data raises.
    frmSchedule(Database& database, const HostData& hostData, ScheduleSpan span, QWidget* parent);
    ~frmSchedule() override;

private:
    void connectControls();
    void move(int direction);
    void refresh();

    std::unique_ptr<Ui::frmSchedule> m_ui;
    Database& m_database;
    const HostData& m_data;
    ScheduleSpan m_span;
    TextTableModel m_model;
};

} // namespace tallyroom::host
