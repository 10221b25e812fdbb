#include "audit/frmUndo.h"

#include "audit/Undo.h"
#include "common/RunError.h"
#include "common/ui/Background.h"
#include "common/ui/Events.h"
#include "common/ui/FixedPitch.h"
#include "common/ui/WindowMemory.h"
#include "store/FormOptionsTable.h"
#include "ui_frmUndo.h"

namespace tallyroom {

frmUndo::frmUndo(const HostContext& context, std::function<bool()> breakOut, QWidget* parent)
    : FormWindow(parent), m_context(context), m_breakOut(std::move(breakOut)),
      m_ui(std::make_unique<Ui::frmUndo>()) {
    m_ui->setupUi(this);
    useFixedPitch(m_ui->List1);
    Events::connect(m_ui->List1, &QListWidget::itemSelectionChanged, this,
                    [this] { showEmployee(); });
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    Events::connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
}

frmUndo::~frmUndo() = default;

void frmUndo::Form_Load() {
    Background::copyFrom(m_context.SplashPicture, this);
    WindowMemory::restore(
        *this, {this},
        FormOptionsTable::read(m_context.DataPath, m_context.CurrentUser, objectName()));
    m_ui->Label1->setText(QStringLiteral("User: ") + m_context.CurrentUser);
    Update();
}

void frmUndo::Form_QueryUnload() {
    FormOptionsTable::write(m_context.DataPath, m_context.CurrentUser, objectName(),
                            WindowMemory::textOf(*this, {this}));
}

// The window has no place to say how many entries cannot be read. What was recorded last is what is
// taken back most often, but it is for the user to choose it.
void frmUndo::Update() {
    m_ui->List1->clear(); // also when the audit cannot be read: what is taken back must not stay
    const Undo::Lines lines = Undo::lines(m_context, m_breakOut());
    m_ui->List1->addItems(lines.texts);
    m_ui->List1->setCurrentRow(lines.latest, QItemSelectionModel::NoUpdate); // scrolls there
}

// The lines have codes only. A name that cannot be had is left out in silence: it is no part of
// what is taken back.
void frmUndo::showEmployee() {
    const QList<QListWidgetItem*> chosen = m_ui->List1->selectedItems();
    m_ui->employeeName->clear();
    if (chosen.isEmpty())
        return;
    try {
        m_ui->employeeName->setText(Undo::employeeName(m_context, chosen.constFirst()->text()));
    } catch (const RunError&) {
    }
}

// There is no question first, and any line may be taken back, in any order.
void frmUndo::Command1_Click() {
    const QList<QListWidgetItem*> chosen = m_ui->List1->selectedItems();
    if (!chosen.isEmpty())
        Undo::take(m_context, chosen.constFirst()->text(), m_breakOut());
    Update();
}

void frmUndo::Command2_Click() {
    reject();
}

} // namespace tallyroom
