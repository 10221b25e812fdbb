#include "host/screens/frmTransactions.h"

#include "common/look/WindowFit.h"
#include "host/HostMessages.h"
#include "host/screens/TransactionTable.h"
#include "ui_frmTransactions.h"

namespace tallyroom::host {

frmTransactions::frmTransactions(Database& database, const HostData& hostData, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmTransactions>()), m_database(database),
      m_data(hostData) {
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    m_ui->Grid->setModel(&m_model);
    setUpChoices();
    refresh();
    const auto refreshSafely = [this] { runCommand(this, [this] { refresh(); }); };
    connect(m_ui->Employee, &QComboBox::currentIndexChanged, this, refreshSafely);
    connect(m_ui->FromDate, &QDateEdit::dateChanged, this, refreshSafely);
    connect(m_ui->ToDate, &QDateEdit::dateChanged, this, refreshSafely);
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    WindowFit::fit(*this);
}

frmTransactions::~frmTransactions() = default;

void frmTransactions::setUpChoices() {
    m_ui->Employee->addItem(QStringLiteral("All employees"), QString());
    for (const Employee& employee : m_data.employees)
        m_ui->Employee->addItem(employee.code + QStringLiteral("  ") + employee.name,
                                employee.code);
    m_ui->Employee->setCurrentIndex(m_data.employees.empty() ? 0 : 1);
    const QDate last = lastRecordedDay(m_database);
    m_ui->FromDate->setDate(last.addDays(-27));
    m_ui->ToDate->setDate(last);
}

void frmTransactions::refresh() {
    showTable(m_model, *m_ui->Grid,
              transactionTable(m_database, m_data, m_ui->Employee->currentData().toString(),
                               {m_ui->FromDate->date(), m_ui->ToDate->date()}));
    m_ui->Count->setText(QStringLiteral("%1 transactions").arg(m_model.rowCount()));
}

} // namespace tallyroom::host
