#include "ordering/frmTLYROrderList.h"

#include "common/ui/Background.h"
#include "common/ui/Events.h"
#include "common/ui/Messages.h"
#include "common/ui/WaitPointer.h"
#include "ordering/Orderings.h"
#include "ordering/frmTLYROrders.h"
#include "ui_frmTLYROrderList.h"

namespace tallyroom {

frmTLYROrderList::frmTLYROrderList(const HostContext& context, QWidget* parent)
    : FormWindow(parent), m_context(context), m_ui(std::make_unique<Ui::frmTLYROrderList>()) {
    m_ui->setupUi(this);
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    Events::connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    Events::connect(m_ui->Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });
    Events::connect(m_ui->Command4, &QPushButton::clicked, this, [this] { Command4_Click(); });
    Events::connect(m_ui->List1, &QListWidget::itemDoubleClicked, this,
                    [this] { List1_DblClick(); });
}

frmTLYROrderList::~frmTLYROrderList() = default;

void frmTLYROrderList::Form_Load() {
    Background::copyFrom(m_context.SplashPicture, this);
    fillList();
}

// An ordering without a readable description is not listed, as none of the commands could find it.
void frmTLYROrderList::fillList() {
    m_ui->List1->clear();
    for (const Ordering& ordering : Orderings::readAll(m_context.DataPath).orderings)
        m_ui->List1->addItem(ordering.descr);
}

QString frmTLYROrderList::selected() const {
    const QList<QListWidgetItem*> items = m_ui->List1->selectedItems();
    return items.isEmpty() ? QString() : items.constFirst()->text();
}

void frmTLYROrderList::Command1_Click() {
    frmTLYROrders(m_context, this).showModally();
    fillList();
}

// The list stays as it is: the editor cannot change a description.
void frmTLYROrderList::Command2_Click() {
    const QString descr = selected();
    if (descr.isNull())
        return;
    WaitPointer::show();
    frmTLYROrders editor(m_context, this);
    editor.Load(descr);
    editor.showModally();
}

void frmTLYROrderList::List1_DblClick() {
    m_ui->Command2->click();
}

void frmTLYROrderList::Command3_Click() {
    const QString descr = selected();
    if (descr.isNull())
        return;
    const auto answer = Messages::show(
        this, QStringLiteral("Do you really want to delete this user-defined ordering?"),
        QMessageBox::NoIcon, QMessageBox::Yes | QMessageBox::No);
    if (answer != QMessageBox::Yes)
        return;
    WaitPointer::show();
    Orderings::remove(m_context.DataPath, descr);
    fillList();
    WaitPointer::hide();
}

void frmTLYROrderList::Command4_Click() {
    reject();
}

} // namespace tallyroom
