#include "host/DatePicker.h"

#include "host/frmDatePicker.h"

#include <QApplication>

namespace tallyroom::host {

namespace {

const QString valueName = QStringLiteral("Value");

class MonthViewObject : public LateBoundObject {
public:
    MonthViewObject() {
        addProperty(
            valueName, [this](const Arguments&) { return Variant(m_value); },
            [this](const Arguments& args) {
                m_value = argument(args, 0).toDate();
                return Variant();
            });
    }

private:
    Date m_value = Dates::today();
};

} // namespace

DatePickerObject::DatePickerObject() : m_monthView(makeObject<MonthViewObject>()) {
    addProperty(QStringLiteral("MonthView1"),
                [this](const Arguments&) { return Variant(m_monthView); });
    addProperty(QStringLiteral("WasPicked"),
                [this](const Arguments&) { return Variant(m_wasPicked); });
    addMethod(QStringLiteral("Show"), [this](const Arguments&) {
        Show();
        return Variant();
    });
}

void DatePickerObject::Show() {
    const Date shown = m_monthView.property(valueName).toDate();
    frmDatePicker form(Dates::toQDateTime(shown).date(), QApplication::activeWindow());
    m_wasPicked = form.exec() == QDialog::Accepted;
    if (m_wasPicked)
        m_monthView.setProperty(valueName, Dates::fromQDate(form.day()));
}

} // namespace tallyroom::host
