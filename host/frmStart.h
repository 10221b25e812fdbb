// Asks what to work on, and who works.
#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmStart;
}

namespace tallyroom::host {

class frmStart : public QDialog {
    Q_OBJECT

public:
    frmStart();
    ~frmStart() override;

    // Once the form has ended accepted.
    QString folder() const;
    QString user() const;

private:
    void listFolders();
    void addFolder(const QString& folder);
    void chooseOther();
    void chooseSite();
    void makeDemonstration();
    void showWhatCanBeDone();

    std::unique_ptr<Ui::frmStart> m_ui;
};

} // namespace tallyroom::host
