// The calendar window.
#pragma once

#include <QDate>
#include <QDialog>
#include <memory>

namespace Ui {
class frmDatePicker;
}

namespace tallyroom::host {

// Ends accepted when a day was picked: by OK, Enter or a double click.
class frmDatePicker : public QDialog {
    Q_OBJECT

public:
    frmDatePicker(QDate shown, QWidget* parent);
    ~frmDatePicker() override;

    QDate day() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void nameParts();
    void showWeekends();

    std::unique_ptr<Ui::frmDatePicker> m_ui;
};

} // namespace tallyroom::host
