#include "host/frmDatePicker.h"

#include "common/look/Contrast.h"
#include "common/look/WindowFit.h"
#include "ui_frmDatePicker.h"

#include <QTextCharFormat>

namespace tallyroom::host {

frmDatePicker::frmDatePicker(QDate shown, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmDatePicker>()) {
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    nameParts();
    showWeekends();
    m_ui->MonthView1->setSelectedDate(shown);
    m_ui->MonthView1->setFocus();
    connect(m_ui->MonthView1, &QCalendarWidget::activated, this, &QDialog::accept);
    connect(m_ui->Buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    WindowFit::fit(*this);
}

frmDatePicker::~frmDatePicker() = default;

// The arrows have no text that could be read out.
void frmDatePicker::nameParts() {
    const std::pair<QString, QString> names[] = {
        {QStringLiteral("qt_calendar_prevmonth"), QStringLiteral("Previous month")},
        {QStringLiteral("qt_calendar_nextmonth"), QStringLiteral("Next month")},
        {QStringLiteral("qt_calendar_yearedit"), QStringLiteral("Year")}};
    for (const auto& [part, name] : names) {
        if (auto* control = m_ui->MonthView1->findChild<QWidget*>(part))
            control->setAccessibleName(name);
    }
}

// In a red that can be seen on the desktop's ground.
void frmDatePicker::showWeekends() {
    QTextCharFormat weekend;
    weekend.setForeground(
        Contrast::apartFrom(palette().color(QPalette::Base), Qt::red, Contrast::ofText));
    m_ui->MonthView1->setWeekdayTextFormat(Qt::Saturday, weekend);
    m_ui->MonthView1->setWeekdayTextFormat(Qt::Sunday, weekend);
}

void frmDatePicker::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showWeekends();
}

QDate frmDatePicker::day() const {
    return m_ui->MonthView1->selectedDate();
}

} // namespace tallyroom::host
