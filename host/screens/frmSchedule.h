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
    // Opens on today or the day of the canvass period that is closest to it, without a period on
    // the last day on which anything was recorded. The database and the data must outlive the
    // window. Raises what reading the data raises.
    frmSchedule(Database& database, const HostData& hostData, ScheduleSpan span,
                const std::optional<Period>& canvass, QWidget* parent);
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
