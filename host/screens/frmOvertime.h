// The screen of the overtime analysis, in which all kinds of report are made.
#pragma once

#include "host/ReportFields.h"
#include "host/screens/ReportCommands.h"
#include "host/screens/ScreenContext.h"
#include "reports/CallOutcome.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmOvertime;
}

namespace tallyroom::host {

class frmOvertime : public QDialog {
    Q_OBJECT

public:
    // Opens on the overtime of the canvass period, without one on the last two weeks in which
    // anything was recorded. Raises what reading the data raises.
    frmOvertime(const ScreenContext& context, QWidget* parent);
    ~frmOvertime() override;

private:
    void setUpChoices();
    void setUpDays();
    void showPeriod(const Period& period);
    void chooseDays();
    void connectControls();
    void connectFields();
    void connectCalls();

    ScreenKind kind() const;
    Period period() const;
    ReportRequest request() const;
    void chooseKind();
    void showFields();
    void listOrders();

    // Makes what is asked for and shows it; what is asked wrongly is said in its place.
    void refresh();
    Report make();
    void showCalled();
    void showCount();
    void recordCall(Contacts::Outcome outcome);

    std::unique_ptr<Ui::frmOvertime> m_ui;
    ScreenContext m_context;
    bool m_showsRecordingDays = false; // in FromDate and ToDate
    std::unique_ptr<ReportCommands> m_commands;
    ScreenKind m_shown;
    bool m_isMaking = false;
};

} // namespace tallyroom::host
