#include "audit/frmTLYRAuditDetails.h"

#include "audit/AuditDeletion.h"
#include "audit/AuditEntries.h"
#include "common/RunError.h"
#include "common/pages/TableReport.h"
#include "common/ui/Background.h"
#include "common/ui/Events.h"
#include "common/ui/GridFill.h"
#include "common/ui/Messages.h"
#include "common/ui/PrintReport.h"
#include "common/ui/WindowMemory.h"
#include "store/FormOptionsTable.h"
#include "ui_frmTLYRAuditDetails.h"

namespace tallyroom {

namespace {

std::vector<TextTable::Column> headings() {
    std::vector<TextTable::Column> columns;
    for (const QString& heading : AuditEntries::headings())
        columns.push_back({heading});
    columns[AuditEntries::Time].alignment = CellAlignment::Right;
    return columns;
}

} // namespace

frmTLYRAuditDetails::frmTLYRAuditDetails(const HostContext& context, std::function<bool()> breakOut,
                                         std::function<AuditSelection()> selection, QWidget* parent)
    : FormWindow(parent), m_context(context), m_breakOut(std::move(breakOut)),
      m_selection(std::move(selection)), m_ui(std::make_unique<Ui::frmTLYRAuditDetails>()),
      m_popup(new QMenu(this)) {
    m_ui->setupUi(this);
    m_popup->setObjectName(QStringLiteral("mnuPop"));
    m_popup->addAction(m_ui->mnuDelete);
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    Events::connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    Events::connect(m_ui->mnuDelete, &QAction::triggered, this, [this] { mnuDelete_Click(); });
}

frmTLYRAuditDetails::~frmTLYRAuditDetails() = default;

void frmTLYRAuditDetails::Form_Load() {
    Background::copyFrom(m_context.SplashPicture, this);
    WindowMemory::restore(
        *this, {this},
        FormOptionsTable::read(m_context.DataPath, m_context.CurrentUser, objectName()));
    m_popup->hide();
    m_ui->Grid->setSearchHeading(AuditEntries::headings().at(AuditEntries::Name));
    fillGrid();
}

void frmTLYRAuditDetails::Form_QueryUnload() {
    FormOptionsTable::write(m_context.DataPath, m_context.CurrentUser, objectName(),
                            WindowMemory::textOf(*this, {this}));
}

void frmTLYRAuditDetails::fillGrid() {
    GridFill grid(*m_ui->Grid);
    TextWidths& measurer = TextWidths::in(*m_ui->Grid);
    grid.setColumns(headings());
    grid.AutoSizeColumns(measurer, 0, -1, true);
    const QString filter = m_context.BucketForm.property(QStringLiteral("employeefilter")).toText();
    bool isEmpty = true;
    AuditEntries::read(m_context.DataPath, filter, m_selection().clause(), m_breakOut(),
                       [&](const AuditEntries::Line& line) {
                           grid.addRow(line);
                           grid.AutoSizeColumns(measurer, -1, -1, false);
                           isEmpty = false;
                       });
    m_ui->Command2->setEnabled(!isEmpty);
    if (!isEmpty)
        grid.removeEmptyRow();
}

void frmTLYRAuditDetails::Command1_Click() {
    reject();
}

void frmTLYRAuditDetails::Command2_Click() {
    TableReport report(m_ui->Grid->table(), QStringLiteral("Canvassing Audit"),
                       m_context.CurrentUser);
    report.head.details = m_selection().description();
    report.makeElastic({QStringLiteral("Name"), QStringLiteral("User")});
    printReport(this, report);
}

// Any error ends the command without a message; what was executed before it stays.
void frmTLYRAuditDetails::mnuDelete_Click() {
    const auto answer = Messages::show(
        this,
        QStringLiteral("The action you are about to perform will remove both the Tallyroom Audit "
                       "entry, as well as the Absent record in Edit Time and Attendace "
                       "Transactions.\r\n\r\nDo you wish to proceed?"),
        QMessageBox::Question, QMessageBox::Yes | QMessageBox::No);
    if (answer != QMessageBox::Yes)
        return;
    const int row = m_ui->Grid->currentIndex().row() + 1;
    AuditEntries::Line line;
    for (int column = 0; column < AuditEntries::columnCount; ++column)
        line.append(m_ui->Grid->text(row, column));
    try {
        deleteAuditLine(m_context.DataPath, line);
        fillGrid();
    } catch (const RunError&) {
    }
}

} // namespace tallyroom
