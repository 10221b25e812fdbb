#include "setup/frmTLYRAssoc2.h"

#include "common/ui/Background.h"
#include "common/ui/Events.h"
#include "setup/AssociationLists.h"
#include "ui_frmTLYRAssoc2.h"

namespace tallyroom {

frmTLYRAssoc2::frmTLYRAssoc2(const HostContext& context, QWidget* parent)
    : FormWindow(parent), m_context(context), m_ui(std::make_unique<Ui::frmTLYRAssoc2>()) {
    m_ui->setupUi(this);
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    Events::connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
}

frmTLYRAssoc2::~frmTLYRAssoc2() = default;

void frmTLYRAssoc2::Form_Load() {
    Background::copyFrom(m_context.SplashPicture, this);
    // Without any absent code this window stays open with empty lists, and a save ends at the first
    // missing choice.
    AssociationLists::load(this, m_context.DataPath,
                           {m_ui->Combo1, m_ui->Combo2, m_ui->Combo3, m_ui->Combo4});
}

void frmTLYRAssoc2::Command1_Click() {
    reject();
}

// The pointer stays an hourglass after saving: the window that comes to the front resets it.
void frmTLYRAssoc2::Command2_Click() {
    const bool saved = AssociationLists::save(
        this, m_context.DataPath, {m_ui->Combo1, m_ui->Combo2, m_ui->Combo3, m_ui->Combo4},
        {QStringLiteral("You need to choose an absent code to associate with the "
                        "acceptance of Time and a Half."),
         QStringLiteral("You need to choose an absent code to associate with the "
                        "declining of Time and a Half."),
         QStringLiteral("You need to choose an absent code to associate with the "
                        "acceptance of Double Time."),
         QStringLiteral("You need to choose an absent code to associate with the "
                        "declining of Double Time.")});
    if (saved)
        accept();
}

} // namespace tallyroom
