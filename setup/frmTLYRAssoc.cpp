#include "setup/frmTLYRAssoc.h"

#include "common/ui/Background.h"
#include "common/ui/Events.h"
#include "common/ui/WaitPointer.h"
#include "setup/AssociationLists.h"
#include "ui_frmTLYRAssoc.h"

namespace tallyroom {

frmTLYRAssoc::frmTLYRAssoc(const HostContext& context, QWidget* parent)
    : FormWindow(parent), m_context(context), m_ui(std::make_unique<Ui::frmTLYRAssoc>()) {
    m_ui->setupUi(this);
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    Events::connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
}

frmTLYRAssoc::~frmTLYRAssoc() = default;

void frmTLYRAssoc::Form_Load() {
    Background::copyFrom(m_context.SplashPicture, this);
    m_noCodes = !AssociationLists::load(this, m_context.DataPath, {m_ui->Combo1, m_ui->Combo2});
}

void frmTLYRAssoc::Form_Activate() {
    if (m_noCodes)
        QMetaObject::invokeMethod(this, &QDialog::reject, Qt::QueuedConnection);
    else
        WaitPointer::hide();
}

void frmTLYRAssoc::Command1_Click() {
    reject();
}

// The pointer stays an hourglass after saving: the window that comes to the front resets it.
void frmTLYRAssoc::Command2_Click() {
    const bool saved = AssociationLists::save(
        this, m_context.DataPath, {m_ui->Combo1, m_ui->Combo2},
        {QStringLiteral("You need to choose an absent code to associate with the "
                        "acceptance of overtime."),
         QStringLiteral("You need to choose an absent code to associate with the "
                        "declining of overtime.")});
    if (saved)
        accept();
}

} // namespace tallyroom
