// Date boxes: filling them from the host's date picker and by keyboard.
#pragma once

#include "common/Objects.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QLineEdit>
#include <QObject>
#include <vector>

namespace tallyroom {

// Binds the date boxes of one window to their picker buttons and to the date keys: Page Up and
// Page Down a month later or earlier, Up and Down a day, Home and End the first and last day of the
// month. The keys act on a box that is not locked and holds a date; a text that is none turns red
// at such a key, though not while it is being typed, until it is a date, however it became one.
// Dates are written as mm/dd/yyyy. The window owns the binding and destroys it when it closes,
// which releases boxes and buttons.
class DateBinding : public QObject {
    Q_OBJECT

public:
    // `datePicker` is the host's form with MonthView1.Value, Show and WasPicked.
    DateBinding(QWidget* window, ObjectRef datePicker);
    ~DateBinding() override;
    Q_DISABLE_COPY_MOVE(DateBinding)

    void bind(QLineEdit* box, QAbstractButton* pickerButton);

    // Shows the host's date picker on the box's date (today when it holds none) and takes over what
    // was picked. Raises what the host's form raises.
    void pick(QLineEdit* box) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_window;
    ObjectRef m_datePicker;
    std::vector<QMetaObject::Connection> m_connections;
};

} // namespace tallyroom
