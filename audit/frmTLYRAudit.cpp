#include "audit/frmTLYRAudit.h"

#include "audit/AuditEntries.h"
#include "audit/frmTLYRAuditDetails.h"
#include "common/DateParser.h"
#include "common/ui/Background.h"
#include "common/ui/DateBinding.h"
#include "common/ui/Events.h"
#include "common/ui/ListObject.h"
#include "common/ui/Messages.h"
#include "common/ui/WaitPointer.h"
#include "common/ui/WrongField.h"
#include "store/FormOptionsTable.h"
#include "ui_frmTLYRAudit.h"

#include <array>

namespace tallyroom {

frmTLYRAudit::frmTLYRAudit(const HostContext& context, std::function<bool()> breakOut,
                           QWidget* parent)
    : FormWindow(parent), m_context(context), m_breakOut(std::move(breakOut)),
      m_ui(std::make_unique<Ui::frmTLYRAudit>()) {
    m_ui->setupUi(this);
    connectControls();
    Check1_Click(false);
    Check2_Click(false);
}

frmTLYRAudit::~frmTLYRAudit() = default;

void frmTLYRAudit::connectControls() {
    Events::connect(m_ui->Check1, &QCheckBox::toggled, this,
                    [this](bool checked) { Check1_Click(checked); });
    Events::connect(m_ui->Check2, &QCheckBox::toggled, this,
                    [this](bool checked) { Check2_Click(checked); });
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    Events::connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    Events::connect(m_ui->Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });
    Events::connect(m_ui->Command4, &QPushButton::clicked, this, [this] { Command4_Click(); });
    Events::connect(m_ui->SSCommand5, &QPushButton::clicked, this, [this] { SSCommand5_Click(); });
}

void frmTLYRAudit::Form_Load() {
    Background::copyFrom(m_context.SplashPicture, this);
    m_dates = std::make_unique<DateBinding>(this, m_context.DatePickerForm);
    m_dates->bind(m_ui->to_date, m_ui->SSCommand2);
    m_dates->bind(m_ui->Text1, m_ui->SSCommand1);
    m_dates->bind(m_ui->Text2, m_ui->SSCommand3);
    m_dates->bind(m_ui->Text3, m_ui->SSCommand4);
    WindowMemory::restore(
        *this, remembered(),
        FormOptionsTable::read(m_context.DataPath, m_context.CurrentUser, objectName()));
    listUsers();
    m_ui->SSPanel4->setVisible(m_breakOut());
    m_ui->SSPanel1->setVisible(!m_breakOut());
}

void frmTLYRAudit::Form_QueryUnload() {
    FormOptionsTable::write(m_context.DataPath, m_context.CurrentUser, objectName(),
                            WindowMemory::textOf(*this, remembered()));
    m_dates.reset();
}

WindowMemory::Remembered frmTLYRAudit::remembered() {
    return {m_ui->SSPanel1, m_ui->Check3, m_ui->Check4, m_ui->Check5, m_ui->Check6, this};
}

void frmTLYRAudit::listUsers() {
    m_ui->List1->clear();
    m_ui->List1->addItems(AuditEntries::users(m_context.DataPath));
    if (m_ui->List1->count() > 0)
        return;
    m_ui->Command2->setEnabled(false);
    Messages::show(this, QStringLiteral("No audit information available."), QMessageBox::Critical);
}

ObjectRef frmTLYRAudit::employees() {
    ensureLoaded();
    return makeObject<ListObject>(m_ui->List2);
}

void frmTLYRAudit::EnableQuery() {
    m_ui->Command4->setEnabled(m_ui->List2->count() > 0);
}

void frmTLYRAudit::Check1_Click(bool checked) {
    for (QWidget* control : std::initializer_list<QWidget*>{m_ui->to_date, m_ui->Text1,
                                                            m_ui->SSCommand2, m_ui->SSCommand1})
        control->setEnabled(checked);
}

void frmTLYRAudit::Check2_Click(bool checked) {
    for (QWidget* control : std::initializer_list<QWidget*>{m_ui->Text2, m_ui->Text3,
                                                            m_ui->SSCommand3, m_ui->SSCommand4})
        control->setEnabled(checked);
}

void frmTLYRAudit::Command1_Click() {
    reject();
}

void frmTLYRAudit::Command2_Click() {
    m_ui->List1->selectAll();
}

void frmTLYRAudit::Command3_Click() {
    m_ui->List1->clearSelection();
}

void frmTLYRAudit::SSCommand5_Click() {
    m_context.BucketForm.call(QStringLiteral("FillSpot"), {employees()});
    m_context.BucketForm.setProperty(QStringLiteral("AllowSort"), Variant(false));
    m_context.BucketForm.call(QStringLiteral("Show"), {Variant(1)});
}

void frmTLYRAudit::refuse(const QString& message) {
    Messages::show(this, message, QMessageBox::Critical);
}

bool frmTLYRAudit::checkDate(QLineEdit* box) {
    if (Dates::isDate(box->text()))
        return true;
    box->setFocus();
    markWrong(box);
    refuse(QStringLiteral("Illegal date. Use the format mm/dd/yyyy"));
    return false;
}

// A range that is not ticked may hold anything.
bool frmTLYRAudit::checkDates() {
    if (m_ui->Check1->isChecked() && !(checkDate(m_ui->to_date) && checkDate(m_ui->Text1)))
        return false;
    return !m_ui->Check2->isChecked() || (checkDate(m_ui->Text2) && checkDate(m_ui->Text3));
}

std::vector<const AnswerKind*> frmTLYRAudit::chosenAnswers() const {
    const std::array boxes = {m_ui->Check3, m_ui->Check5, m_ui->Check4, m_ui->Check6};
    static_assert(boxes.size() == std::size(answerKinds));
    std::vector<const AnswerKind*> chosen;
    for (std::size_t at = 0; at < boxes.size(); ++at) {
        if (boxes[at]->isChecked())
            chosen.push_back(&answerKinds[at]);
    }
    return chosen;
}

bool frmTLYRAudit::kindIsChosen() const {
    return m_ui->SSPanel4->isHidden() || !chosenAnswers().empty();
}

// The first message speaks of employees though it is the users that are missing.
void frmTLYRAudit::Command4_Click() {
    WaitPointer::show();
    if (m_ui->List1->count() == 0) {
        refuse(QStringLiteral("You must select at least one employee before continuing."));
        return;
    }
    if (!checkDates())
        return;
    if (m_ui->List1->selectedItems().isEmpty()) {
        refuse(QStringLiteral(
            "You must choose at least one user on which you wish to view Audit information."));
        return;
    }
    if (!kindIsChosen()) {
        refuse(QStringLiteral("You haven't selected what you wish to view. Select at least one of "
                              "the options (Accepted 1.5, 2.0, Declined 1.5, 2.0)."));
        return;
    }
    frmTLYRAuditDetails(
        m_context, m_breakOut, [this] { return selection(); }, this)
        .showModally();
}

AuditSelection frmTLYRAudit::selection() const {
    AuditSelection result;
    for (int row = 0; row < m_ui->List1->count(); ++row) {
        if (m_ui->List1->item(row)->isSelected())
            result.users.append(m_ui->List1->item(row)->text());
    }
    result.employees = m_ui->List2->count();
    result.breakOut = m_breakOut();
    if (m_ui->Option3->isChecked())
        result.kind = AuditSelection::Kind::Declined;
    else if (m_ui->Option2->isChecked())
        result.kind = AuditSelection::Kind::Accepted;
    result.answers = chosenAnswers();
    if (m_ui->Check1->isChecked())
        result.systemDate = {m_ui->to_date->text(), m_ui->Text1->text()};
    if (m_ui->Check2->isChecked())
        result.canvassDate = {m_ui->Text2->text(), m_ui->Text3->text()};
    return result;
}

} // namespace tallyroom
