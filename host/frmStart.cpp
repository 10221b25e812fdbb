#include "host/frmStart.h"

#include "common/look/WindowFit.h"
#include "host/HostMessages.h"
#include "host/RecentFolders.h"
#include "host/demo/DemoData.h"
#include "host/help/frmHelp.h"
#include "store/Workspace.h"
#include "ui_frmStart.h"

#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QPushButton>

namespace tallyroom::host {

namespace {

QString askAddress(QWidget* parent) {
    QInputDialog dialog(parent);
    dialog.setObjectName(QStringLiteral("SiteAddress"));
    dialog.setWindowTitle(QStringLiteral("Site on a Server"));
    dialog.setLabelText(QStringLiteral("&Address (postgresql://user@host/database/SITE)"));
    return dialog.exec() == QDialog::Accepted ? dialog.textValue().trimmed() : QString();
}

} // namespace

frmStart::frmStart() : m_ui(std::make_unique<Ui::frmStart>()) {
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    listFolders();
    m_ui->User->setText(RecentFolders::user());
    connect(m_ui->OtherFolder, &QPushButton::clicked, this, &frmStart::chooseOther);
    connect(m_ui->Site, &QPushButton::clicked, this,
            [this] { runCommand(this, [this] { chooseSite(); }); });
    connect(m_ui->Demonstration, &QPushButton::clicked, this,
            [this] { runCommand(this, [this] { makeDemonstration(); }); });
    connect(m_ui->Folders, &QListWidget::currentRowChanged, this, &frmStart::showWhatCanBeDone);
    connect(m_ui->Folders, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(m_ui->Buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showWhatCanBeDone();
    frmHelp::offerIn(*this);
    WindowFit::fit(*this);
}

frmStart::~frmStart() = default;

QString frmStart::folder() const {
    const QListWidgetItem* chosen = m_ui->Folders->currentItem();
    return chosen ? chosen->text() : QString();
}

QString frmStart::user() const {
    return m_ui->User->text().trimmed();
}

void frmStart::listFolders() {
    m_ui->Folders->addItems(RecentFolders::all());
    m_ui->Folders->setCurrentRow(0);
}

void frmStart::addFolder(const QString& folder) {
    m_ui->Folders->insertItem(0, folder);
    m_ui->Folders->setCurrentRow(0);
    m_ui->User->setFocus();
}

void frmStart::chooseOther() {
    const QString folder =
        QFileDialog::getExistingDirectory(this, QStringLiteral("Data Folder"), this->folder());
    if (!folder.isEmpty())
        addFolder(QDir::cleanPath(folder));
}

// Opened at once: an address with a fault, or with a password, is not listed.
void frmStart::chooseSite() {
    const QString given = askAddress(this);
    if (given.isEmpty())
        return;
    if (!Workspace::isOnServer(given))
        throw RunError(ErrorNumber::invalidPath,
                       QStringLiteral("The address of a site begins with postgresql://."),
                       QStringLiteral("Brightclock"));
    Workspace::openHostOptions(given);
    addFolder(given);
}

// The dialog names a folder that is still to be made, as for a file that is saved.
void frmStart::makeDemonstration() {
    DemoSettings settings;
    settings.folder = QFileDialog::getSaveFileName(
        this, QStringLiteral("New Demonstration Folder"),
        QDir::home().filePath(QStringLiteral("Brightclock Demonstration")));
    if (settings.folder.isEmpty())
        return;
    settings.end = QDate::currentDate().addDays(-1);
    createDemoData(settings, [](int, int) {});
    addFolder(QDir::cleanPath(settings.folder));
}

void frmStart::showWhatCanBeDone() {
    m_ui->Buttons->button(QDialogButtonBox::Open)->setEnabled(!folder().isEmpty());
}

} // namespace tallyroom::host
