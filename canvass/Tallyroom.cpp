#include "canvass/Tallyroom.h"

#include "audit/frmTLYRAudit.h"
#include "audit/frmUndo.h"
#include "canvass/BoardKeys.h"
#include "canvass/BoardPlaces.h"
#include "common/pages/TableReport.h"
#include "common/ui/Background.h"
#include "common/ui/DateBinding.h"
#include "common/ui/Events.h"
#include "common/ui/ListObject.h"
#include "common/ui/Messages.h"
#include "common/ui/PrintReport.h"
#include "common/ui/WaitPointer.h"
#include "ordering/frmTLYROrderList.h"
#include "setup/Associations.h"
#include "setup/frmTLYRAssoc.h"
#include "setup/frmTLYRAssoc2.h"
#include "setup/frmTLYRPeriod.h"
#include "store/FormOptionsTable.h"
#include "ui_Tallyroom.h"

#include <QCloseEvent>

namespace tallyroom {

namespace {

// The Close item is gone from the window's own menu: only the button closes the board.
constexpr Qt::WindowFlags frameWithoutClose = Qt::Window | Qt::CustomizeWindowHint |
                                              Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                              Qt::WindowMinMaxButtonsHint;

} // namespace

Tallyroom::Tallyroom(const HostContext& context)
    : QMainWindow(nullptr, frameWithoutClose), m_context(context),
      m_ui(std::make_unique<Ui::Tallyroom>()) {
    m_ui->setupUi(this);
    m_view = std::make_unique<ViewMenu>(*this, *m_ui, [this] { Update(); });
    m_order = std::make_unique<OrderMenu>(*this, *m_ui->MnuOrd, [this] { Update(); });
    m_board = std::make_unique<CanvassBoard>(*this, *m_ui, m_context, *m_view, *m_order);
    m_answers = std::make_unique<AnswerMenu>(*this, *m_ui, m_context, *m_board);
    setWindowModality(Qt::ApplicationModal);
    m_places = std::make_unique<BoardPlaces>(*this, *m_ui);
    m_ui->centralwidget->installEventFilter(this);
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    Events::connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connectMenus();
    connectShortcuts();
    BoardKeys::connect(*this, *m_ui);
}

Tallyroom::~Tallyroom() = default;

void Tallyroom::connectMenus() {
    const std::pair<QAction*, void (Tallyroom::*)()> handlers[] = {
        {m_ui->mnuAssoc, &Tallyroom::mnuAssoc_Click},
        {m_ui->mnuBuckets, &Tallyroom::mnuBuckets_Click},
        {m_ui->mnuDefinePeriod, &Tallyroom::mnuDefinePeriod_Click},
        {m_ui->mnuValidate, &Tallyroom::mnuValidate_Click},
        {m_ui->mnuRefresh, &Tallyroom::mnuRefresh_Click},
        {m_ui->mnuUndo, &Tallyroom::mnuUndo_Click},
        {m_ui->mnuAudit, &Tallyroom::mnuAudit_Click},
        {m_ui->mnuBreakOut, &Tallyroom::mnuBreakOut_Click},
        {m_ui->MnuOrder_0, &Tallyroom::MnuOrder_Click},
        {m_ui->mnuOTAnalysis, &Tallyroom::mnuOTAnalysis_Click}};
    for (const auto& [action, handler] : handlers)
        Events::connect(action, &QAction::triggered, this,
                        [this, handler = handler] { (this->*handler)(); });
}

void Tallyroom::connectShortcuts() {
    const std::pair<QAction*, const char16_t*> handlers[] = {
        {m_ui->mnuETA, u"ttedit_click"},
        {m_ui->mnuDSched, u"mnupms_click"},
        {m_ui->mnuWSched, u"mnuchangesched_click"},
        {m_ui->mnuMSched, u"mnuemployeesch_click"}};
    for (const auto& [action, handler] : handlers)
        Events::connect(action, &QAction::triggered, this,
                        [this, name = QString::fromUtf16(handler)] { CallHostMenu(name); });
}

void Tallyroom::showModally() {
    if (!Events::run(this, [this] { Form_Load(); })) {
        WaitPointer::hide();
        return;
    }
    show();
    m_loop.exec();
}

void Tallyroom::Form_Load() {
    m_board->open();
    Background::copyFrom(m_context.SplashPicture, m_ui->centralwidget);
    firstRunSetup();
    m_board->readPeriod();
    m_ui->mnuDefinePeriod->setVisible(m_context.isMaster());
    m_ui->mnuValidate->setVisible(m_context.isMaster());
    LoadOrderings();
    WindowMemory::restore(
        *this, remembered(),
        FormOptionsTable::read(m_board->dataPath(), m_context.CurrentUser, objectName()));
    // Most answers are for today's overtime; the user sees the date and may change it.
    m_ui->to_date->setText(Dates::format(Dates::today(), QStringLiteral("mm/dd/yyyy")));
    showBreakOut();
    Canvass();
    m_dates = std::make_unique<DateBinding>(this, m_context.DatePickerForm);
    m_dates->bind(m_ui->to_date, m_ui->SSCommand2);
}

void Tallyroom::firstRunSetup() {
    if (Associations::read(m_board->dataPath()))
        return;
    Messages::show(
        this,
        QStringLiteral(
            "Welcome to the Tallyroom!\r\n\r\n"
            "This add-in for Brightclock requires some setup to occur prior to starting. After "
            "clicking [Ok] below, you will be taken to a new window which will ask you to "
            "associate two absent codes; one to identify ACCEPTED overtime, and another to "
            "identify DECLINED overtime."),
        QMessageBox::Information);
    frmTLYRAssoc(m_context, this).showModally();
}

void Tallyroom::Form_Activate() {
    WaitPointer::hide();
}

bool Tallyroom::event(QEvent* event) {
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::WindowActivate)
        Form_Activate();
    return handled;
}

void Tallyroom::closeEvent(QCloseEvent* event) {
    event->setAccepted(m_closing);
    if (m_closing)
        Form_QueryUnload();
}

WindowMemory::Remembered Tallyroom::remembered() {
    WindowMemory::Remembered remembered = m_view->marks();
    remembered.insert(remembered.end(), {m_ui->mnuTotal, m_ui->MnuOrd, this});
    return remembered;
}

void Tallyroom::Form_QueryUnload() {
    FormOptionsTable::write(m_board->dataPath(), m_context.CurrentUser, objectName(),
                            WindowMemory::textOf(*this, remembered()));
    m_dates.reset();
}

bool Tallyroom::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        Form_Resize();
    return QMainWindow::eventFilter(watched, event);
}

void Tallyroom::Form_Resize() {
    m_places->resize();
}

void Tallyroom::Command1_Click() {
    m_board->close();
    m_closing = true;
    close();
    m_loop.quit();
}

void Tallyroom::Command2_Click() {
    TableReport report(m_ui->Grid->table(), QStringLiteral("Canvassing Details"),
                       m_context.CurrentUser);
    const ReportDetails details = reportDetails(report.rowCount());
    report.head.details = details.lines();
    report.head.about = details.day();
    report.makeElastic(BoardColumns::headersOf(CellKind::Text));
    if (m_ui->mnuDateLine->isChecked())
        report.addLine(QStringLiteral("Date"), 24);
    if (m_ui->mnuSigLine->isChecked())
        report.addLine(QStringLiteral("Signature"), 60);
    printReport(this, report);
}

// What a reader of the posted sheet has to know to make sense of the figures, and who signs it, of
// what is signed.
ReportDetails Tallyroom::reportDetails(int employees) const {
    ReportDetails details;
    details.period = m_board->period();
    details.total = m_view->totalCaption();
    details.multiplied = m_ui->mnuMult->isChecked();
    if (const auto ordering = m_order->inForce())
        details.ordering = ordering->descr;
    details.canvassDate = m_ui->to_date->text();
    details.breakOut = m_ui->mnuBreakOut->isChecked();
    details.amount = m_ui->Text1->text();
    details.doubleAmount = m_ui->Text2->text();
    details.department = m_board->department();
    details.employees = employees;
    return details;
}

void Tallyroom::Canvass() {
    m_board->build();
}

void Tallyroom::Update() {
    m_board->fill();
}

void Tallyroom::mnuAssoc_Click() {
    if (m_ui->mnuBreakOut->isChecked())
        frmTLYRAssoc2(m_context, this).showModally();
    else
        frmTLYRAssoc(m_context, this).showModally();
}

void Tallyroom::mnuBuckets_Click() {
    m_context.BucketForm.call(QStringLiteral("FillSpot"), {makeObject<ListObject>(m_ui->List1)});
    m_context.BucketForm.call(QStringLiteral("Show"), {Variant(1)});
    Canvass();
}

void Tallyroom::mnuDefinePeriod_Click() {
    frmTLYRPeriod(m_context, this).showModally();
    m_board->readPeriod();
    Canvass();
}

// The validation window that this entry addresses does not exist, so the command fails before it
// comes to the rebuild.
void Tallyroom::mnuValidate_Click() {
    const Variant validationWindow;
    validationWindow.toObject().call(QStringLiteral("Show"), {Variant(1)});
    Canvass();
}

void Tallyroom::mnuUndo_Click() {
    frmUndo(
        m_context, [this] { return m_ui->mnuBreakOut->isChecked(); }, this)
        .showModally();
    Canvass();
}

void Tallyroom::mnuAudit_Click() {
    frmTLYRAudit browser(
        m_context, [this] { return m_ui->mnuBreakOut->isChecked(); }, this);
    m_context.BucketForm.call(QStringLiteral("fillalist"), {browser.employees()});
    browser.showModally();
    m_board->showAsked(); // an entry may have been deleted
}

void Tallyroom::mnuRefresh_Click() {
    Canvass();
}

void Tallyroom::mnuBreakOut_Click() {
    showBreakOut();
    Update();
}

void Tallyroom::showBreakOut() {
    const bool apart = m_ui->mnuBreakOut->isChecked();
    m_ui->Label3->setText(apart ? QStringLiteral("1.5") : QStringLiteral("Overtime"));
    m_ui->Label4->setVisible(apart);
    m_ui->Text2->setVisible(apart);
}

void Tallyroom::CallHostMenu(const QString& handler) {
    m_context.HostMenuForm.call(handler);
}

void Tallyroom::mnuOTAnalysis_Click() {
    CallHostMenu(QStringLiteral("mnu_ot_anal_click"));
    Canvass();
}

void Tallyroom::LoadOrderings() {
    m_board->noteOrderings(m_order->load(m_board->dataPath()));
}

// "Define..."
void Tallyroom::MnuOrder_Click() {
    frmTLYROrderList(m_context, this).showModally();
    LoadOrderings();
    Update();
}

} // namespace tallyroom
