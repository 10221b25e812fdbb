#include "host/help/frmAbout.h"

#include "common/look/WindowFit.h"
#include "ui_frmAbout.h"

#include <QClipboard>
#include <QPushButton>

namespace tallyroom::host {

frmAbout::frmAbout(const QStringList& versions, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmAbout>()) {
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    m_ui->Versions->setPlainText(versions.join(u'\n'));
    QPushButton* copy =
        m_ui->Buttons->addButton(QStringLiteral("Cop&y"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("Copy"));
    connect(copy, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(m_ui->Versions->toPlainText()); });
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    WindowFit::fit(*this);
}

frmAbout::~frmAbout() = default;

} // namespace tallyroom::host
