#include "setup/frmTLYRPeriod.h"

#include "common/DateParser.h"
#include "common/ui/Background.h"
#include "common/ui/Events.h"
#include "common/ui/Messages.h"
#include "common/ui/WaitPointer.h"
#include "common/ui/WrongField.h"
#include "ui_frmTLYRPeriod.h"

namespace tallyroom {

namespace {

Date dateIn(const QLineEdit* box) {
    return Variant(box->text()).toDate();
}

} // namespace

frmTLYRPeriod::frmTLYRPeriod(const HostContext& context, QWidget* parent)
    : FormWindow(parent), m_context(context), m_ui(std::make_unique<Ui::frmTLYRPeriod>()) {
    m_ui->setupUi(this);
    Events::connect(m_ui->SSCheck1, &QCheckBox::toggled, this,
                    [this](bool checked) { SSCheck1_Click(checked); });
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    Events::connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
}

frmTLYRPeriod::~frmTLYRPeriod() = default;

void frmTLYRPeriod::Form_Load() {
    m_dates = std::make_unique<DateBinding>(this, m_context.DatePickerForm);
    m_dates->bind(m_ui->Text1, m_ui->SSCommand2);
    m_dates->bind(m_ui->Text2, m_ui->SSCommand1);
    Background::copyFrom(m_context.SplashPicture, this);
    // Over a period that cannot be read a new one is to be typed: the boxes stay empty.
    try {
        showPeriod(TotallingPeriod::read(m_context.DataPath));
    } catch (const RunError& error) {
        if (error.number() != TotallingPeriod::unreadable)
            throw;
    }
}

void frmTLYRPeriod::showPeriod(const std::optional<TotallingPeriod>& period) {
    m_ui->SSCheck1->setChecked(!period);
    if (!period)
        return;
    m_ui->Text1->setText(Dates::format(period->from, QStringLiteral("mm/dd/yyyy")));
    m_ui->Text2->setText(Dates::format(period->to, QStringLiteral("mm/dd/yyyy")));
}

void frmTLYRPeriod::Form_QueryUnload() {
    m_dates.reset();
}

void frmTLYRPeriod::SSCheck1_Click(bool checked) {
    const std::initializer_list<QWidget*> dateControls = {
        m_ui->Label3, m_ui->Label1, m_ui->Text1, m_ui->Text2, m_ui->SSCommand1, m_ui->SSCommand2};
    for (QWidget* control : dateControls)
        control->setEnabled(!checked);
}

// A box that was painted stays red; nothing in this window takes the colour back.
bool frmTLYRPeriod::checkDate(QLineEdit* box) {
    if (Dates::isDate(box->text()))
        return true;
    box->setFocus();
    markWrong(box);
    Messages::show(this, QStringLiteral("Illegal date. Use the format MM/DD/YYYY"),
                   QMessageBox::NoIcon);
    return false;
}

// From may lie after To: the database takes the bounds either way round.
void frmTLYRPeriod::Command1_Click() {
    WaitPointer::show();
    std::optional<TotallingPeriod> period;
    if (!m_ui->SSCheck1->isChecked()) {
        if (!checkDate(m_ui->Text1) || !checkDate(m_ui->Text2))
            return;
        period = TotallingPeriod{dateIn(m_ui->Text1), dateIn(m_ui->Text2)};
    }
    TotallingPeriod::write(m_context.DataPath, period);
    WaitPointer::hide();
    accept();
}

void frmTLYRPeriod::Command2_Click() {
    reject();
}

} // namespace tallyroom
