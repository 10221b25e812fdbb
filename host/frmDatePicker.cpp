#include "host/frmDatePicker.h"

#include "common/look/WindowFit.h"
#include "ui_frmDatePicker.h"

namespace tallyroom::host {

frmDatePicker::frmDatePicker(QDate shown, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmDatePicker>()) {
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    m_ui->MonthView1->setSelectedDate(shown);
    m_ui->MonthView1->setFocus();
    connect(m_ui->MonthView1, &QCalendarWidget::activated, this, &QDialog::accept);
    connect(m_ui->Buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    WindowFit::fit(*this);
}

frmDatePicker::~frmDatePicker() = default;

QDate frmDatePicker::day() const {
    return m_ui->MonthView1->selectedDate();
}

} // namespace tallyroom::host
