// Which program this is.
#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmAbout;
}

namespace tallyroom::host {

class frmAbout : public QDialog {
    Q_OBJECT

public:
    frmAbout(const QStringList& versions, QWidget* parent); // see versionLines()
    ~frmAbout() override;

private:
    std::unique_ptr<Ui::frmAbout> m_ui;
};

} // namespace tallyroom::host
