#include "ordering/frmTLYROrders.h"

#include "common/ui/Background.h"
#include "common/ui/Events.h"
#include "common/ui/Messages.h"
#include "common/ui/WaitPointer.h"
#include "common/ui/WrongField.h"
#include "ordering/Orderings.h"
#include "ui_frmTLYROrders.h"

#include <QShortcut>

namespace tallyroom {

frmTLYROrders::frmTLYROrders(const HostContext& context, QWidget* parent)
    : FormWindow(parent), m_context(context), m_ui(std::make_unique<Ui::frmTLYROrders>()) {
    m_ui->setupUi(this);
    connectControls();
    prepareMove(m_ui->SSCommand1, QStyle::SP_ArrowUp, Qt::Key_Up, QStringLiteral("Move up"));
    prepareMove(m_ui->SSCommand2, QStyle::SP_ArrowDown, Qt::Key_Down, QStringLiteral("Move down"));
}

frmTLYROrders::~frmTLYROrders() = default;

// A button's own shortcut clicks only once in a while; one beside it keeps up with a held key.
void frmTLYROrders::prepareMove(QPushButton* button, QStyle::StandardPixmap arrow, Qt::Key key,
                                const QString& name) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::ALT | key), m_ui->List1);
    shortcut->setContext(Qt::WidgetShortcut); // elsewhere the keys open drop-down lists
    Events::connect(shortcut, &QShortcut::activated, this, [button] { button->click(); });
    button->setIcon(style()->standardIcon(arrow));
    button->setAccessibleName(name);
    button->setToolTip(QStringLiteral("%1 (%2)").arg(name, shortcut->key().toString()));
}

void frmTLYROrders::connectControls() {
    Events::connect(m_ui->List1, &QListWidget::currentRowChanged, this, [this] { List1_Click(); });
    Events::connect(m_ui->List1, &QListWidget::itemChanged, this,
                    [this](const QListWidgetItem* item) { List1_ItemCheck(item); });
    Events::connect(m_ui->Combo1, &QComboBox::activated, this, [this] { Combo1_Click(); });
    Events::connect(m_ui->SSCommand1, &QPushButton::clicked, this, [this] { SSCommand1_Click(); });
    Events::connect(m_ui->SSCommand2, &QPushButton::clicked, this, [this] { SSCommand2_Click(); });
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    Events::connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
}

void frmTLYROrders::Form_Load() {
    Background::copyFrom(m_context.SplashPicture, this);
    fillList();
}

void frmTLYROrders::Load(const QString& Description) {
    ensureLoaded();
    const auto ordering = Orderings::read(m_context.DataPath, Description);
    if (!ordering) {
        Messages::show(this,
                       QStringLiteral("Could not load user-defined ordering [") + Description +
                           QLatin1Char(']'),
                       QMessageBox::NoIcon);
        return;
    }
    m_draft.load(ordering->details);
    m_ui->Text2->setText(ordering->descr);
    m_ui->Text2->setEnabled(false);
    fillList();
    m_ui->List1->setCurrentRow(0);
    m_ui->List1->setFocus();
    showSummary();
}

void frmTLYROrders::fillList() {
    m_showing = true;
    m_ui->List1->clear();
    for (int position = 0; position < m_draft.count(); ++position) {
        m_ui->List1->addItem(new QListWidgetItem);
        showElement(position);
    }
    m_showing = false;
}

void frmTLYROrders::showElement(int position) {
    QListWidgetItem* item = m_ui->List1->item(position);
    item->setText(m_draft.name(position));
    item->setCheckState(m_draft.takesPart(position) ? Qt::Checked : Qt::Unchecked);
}

void frmTLYROrders::showSummary() {
    m_ui->Label1->setText(m_draft.summary());
}

void frmTLYROrders::List1_Click() {
    const int current = m_ui->List1->currentRow();
    if (m_showing || current < 0)
        return;
    m_ui->Combo1->setCurrentIndex(m_draft.direction(current));
    showSummary();
}

void frmTLYROrders::List1_ItemCheck(const QListWidgetItem* item) {
    if (m_showing)
        return;
    m_draft.setTakesPart(m_ui->List1->row(item), item->checkState() == Qt::Checked);
    showSummary();
}

void frmTLYROrders::Combo1_Click() {
    const int current = m_ui->List1->currentRow();
    if (current >= 0)
        m_draft.setDirection(current,
                             static_cast<OrderingDraft::Direction>(m_ui->Combo1->currentIndex()));
    showSummary();
}

void frmTLYROrders::SSCommand1_Click() {
    const int current = m_ui->List1->currentRow();
    if (current > 0)
        move(current, current - 1);
}

void frmTLYROrders::SSCommand2_Click() {
    const int current = m_ui->List1->currentRow();
    if (current >= 0 && current < m_draft.count() - 1)
        move(current, current + 1);
}

void frmTLYROrders::move(int from, int to) {
    m_draft.exchange(from, to);
    m_showing = true;
    showElement(from);
    showElement(to);
    m_showing = false;
    m_ui->List1->setCurrentRow(to);
    m_ui->List1->scrollToItem(m_ui->List1->item(to));
    showSummary();
}

void frmTLYROrders::refuse(const QString& message, bool description) {
    if (description) {
        m_ui->Text2->setFocus();
        markWrong(m_ui->Text2);
    }
    Messages::show(this, message, QMessageBox::Critical);
}

void frmTLYROrders::Command1_Click() {
    WaitPointer::show();
    const QString details = m_draft.detailsToStore();
    const QString descr = m_ui->Text2->text();
    if (descr.trimmed().isEmpty()) {
        refuse(QStringLiteral("A description is required for this user-defined ordering."), true);
        return;
    }
    if (!m_draft.anyTakesPart()) {
        refuse(QStringLiteral("You have not selected any elements."), false);
        return;
    }
    const bool isNew = m_ui->Text2->isEnabled();
    const auto result = isNew ? Orderings::add(m_context.DataPath, {descr, details})
                              : Orderings::change(m_context.DataPath, {descr, details});
    if (result == Orderings::SaveResult::Duplicate) {
        refuse(QStringLiteral("Duplicate description. Please enter a unique description for this "
                              "user-defined ordering."),
               true);
    } else if (result == Orderings::SaveResult::NotFound) {
        refuse(QStringLiteral("Error trying to locate record for update."), true);
    } else {
        WaitPointer::hide();
        accept();
    }
}

void frmTLYROrders::Command2_Click() {
    reject();
}

} // namespace tallyroom
