#include "host/screens/frmTransactions.h"

#include "common/Counted.h"
#include "common/look/WindowFit.h"
#include "host/HostMessages.h"
#include "host/help/frmHelp.h"
#include "host/screens/TransactionTable.h"
#include "ui_frmTransactions.h"

namespace tallyroom::host {

frmTransactions::frmTransactions(const ScreenContext& context, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmTransactions>()), m_context(context) {
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    m_table = std::make_unique<ShownTable>(*m_ui->Grid);
    m_commands = std::make_unique<ReportCommands>(*this, *m_ui->Buttons, *m_table, context.user,
                                                  [this] { return report(); });
    setUpChoices();
    refresh();
    const auto refreshSafely = [this] { runCommand(this, [this] { refresh(); }); };
    connect(m_ui->Employee, &QComboBox::currentIndexChanged, this, refreshSafely);
    connect(m_ui->FromDate, &QDateEdit::dateChanged, this, refreshSafely);
    connect(m_ui->ToDate, &QDateEdit::dateChanged, this, refreshSafely);
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    frmHelp::offerIn(*this);
    WindowFit::fit(*this);
}

frmTransactions::~frmTransactions() = default;

void frmTransactions::setUpChoices() {
    m_ui->Employee->addItem(QStringLiteral("All employees"), QString());
    for (const Employee& employee : m_context.data.employees)
        m_ui->Employee->addItem(employee.code + QStringLiteral("  ") + employee.name,
                                employee.code);
    m_ui->Employee->setCurrentIndex(m_context.data.employees.empty() ? 0 : 1);
    const QDate last = lastRecordedDay(*m_context.database);
    m_ui->FromDate->setDate(last.addDays(-27));
    m_ui->ToDate->setDate(last);
}

Period frmTransactions::period() const {
    return {m_ui->FromDate->date(), m_ui->ToDate->date()};
}

void frmTransactions::refresh() {
    m_table->show(transactionTable(*m_context.database, m_context.data,
                                   m_ui->Employee->currentData().toString(), period()));
    m_ui->Count->setText(counted(static_cast<qint64>(m_table->table().rows.size()), u"transaction",
                                 u"transactions"));
}

Report frmTransactions::report() const {
    Report report;
    report.title = windowTitle();
    report.details = {m_ui->Employee->currentText().simplified(), shownPeriod(period())};
    report.tables = {m_table->table()};
    return report;
}

} // namespace tallyroom::host
