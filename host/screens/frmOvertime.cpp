#include "host/screens/frmOvertime.h"

#include "common/look/WindowFit.h"
#include "host/HostMessages.h"
#include "host/screens/OvertimeTable.h"
#include "ui_frmOvertime.h"

namespace tallyroom::host {

namespace {

Period fortnightTo(QDate last) {
    return {last.addDays(-13), last};
}

} // namespace

frmOvertime::frmOvertime(Database& database, const HostData& hostData,
                         const std::optional<Period>& canvass, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmOvertime>()), m_database(database),
      m_data(hostData) {
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    m_ui->Grid->setModel(&m_model);
    const Period shown = canvass ? *canvass : fortnightTo(lastRecordedDay(database));
    m_ui->FromDate->setDate(shown.from);
    m_ui->ToDate->setDate(shown.to);
    refresh();
    const auto refreshSafely = [this] { runCommand(this, [this] { refresh(); }); };
    connect(m_ui->ByDepartment, &QRadioButton::toggled, this, refreshSafely);
    connect(m_ui->FromDate, &QDateEdit::dateChanged, this, refreshSafely);
    connect(m_ui->ToDate, &QDateEdit::dateChanged, this, refreshSafely);
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    WindowFit::fit(*this);
}

frmOvertime::~frmOvertime() = default;

void frmOvertime::refresh() {
    const auto grouping =
        m_ui->ByDepartment->isChecked() ? OvertimeGrouping::Department : OvertimeGrouping::Employee;
    showTable(m_model, *m_ui->Grid,
              overtimeTable(m_database, m_data, {m_ui->FromDate->date(), m_ui->ToDate->date()},
                            grouping));
}

} // namespace tallyroom::host
