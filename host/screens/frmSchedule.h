// The screen with the schedule of a day, a week or a month.
#pragma once

#include "host/screens/ReportCommands.h"
#include "host/screens/ScheduleTable.h"
#include "host/screens/ScreenContext.h"

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
    // the last day on which anything was recorded. Raises what reading the data raises.
    frmSchedule(const ScreenContext& context, ScheduleSpan span,
                const std::optional<Period>& canvass, QWidget* parent);
    ~frmSchedule() override;

private:
    void connectControls();
    void move(int direction);
    void refresh();
    Report report() const; // of what is shown

    std::unique_ptr<Ui::frmSchedule> m_ui;
    ScreenContext m_context;
    ScheduleSpan m_span;
    std::unique_ptr<ShownTable> m_table;
    std::unique_ptr<ReportCommands> m_commands;
};

} // namespace tallyroom::host
