// The main window's menus: setup, view, orderings, shortcuts into the host, and the answers.
#include "audit/frmTLYRAudit.h"
#include "audit/frmUndo.h"
#include "canvass/QuickBuild.h"
#include "canvass/Tallyroom.h"
#include "common/Units.h"
#include "common/ui/Events.h"
#include "common/ui/ListObject.h"
#include "common/ui/LongMenu.h"
#include "common/ui/Messages.h"
#include "common/ui/WaitPointer.h"
#include "ordering/Orderings.h"
#include "ordering/frmTLYROrderList.h"
#include "setup/frmTLYRAssoc.h"
#include "setup/frmTLYRAssoc2.h"
#include "setup/frmTLYRPeriod.h"
#include "ui_Tallyroom.h"

namespace tallyroom {

namespace {

constexpr int firstOrdering = 2; // items 0 and 1 are "Define..." and the separator

} // namespace

void Tallyroom::onTriggered(QAction* action, void (Tallyroom::*handler)()) {
    Events::connect(action, &QAction::triggered, this, [this, handler] { (this->*handler)(); });
}

void Tallyroom::connectSetupMenus() {
    onTriggered(m_ui->mnuAssoc, &Tallyroom::mnuAssoc_Click);
    onTriggered(m_ui->mnuBuckets, &Tallyroom::mnuBuckets_Click);
    onTriggered(m_ui->mnuDefinePeriod, &Tallyroom::mnuDefinePeriod_Click);
    onTriggered(m_ui->mnuValidate, &Tallyroom::mnuValidate_Click);
    onTriggered(m_ui->mnuRefresh, &Tallyroom::mnuRefresh_Click);
    m_ui->mnuRefresh->setShortcut(QKeySequence::Refresh);
    onTriggered(m_ui->mnuUndo, &Tallyroom::mnuUndo_Click);
    onTriggered(m_ui->mnuAudit, &Tallyroom::mnuAudit_Click);
    onTriggered(m_ui->mnuBreakOut, &Tallyroom::mnuBreakOut_Click);
    Events::connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
}

void Tallyroom::connectOrderMenu() {
    Events::connect(m_ui->MnuOrder_0, &QAction::triggered, this, [this] { MnuOrder_Click(0); });
    letScroll(m_ui->MnuOrd);
    m_ui->MnuOrd->addSeparator()->setObjectName(QStringLiteral("MnuOrder_1"));
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
    onTriggered(m_ui->mnuOTAnalysis, &Tallyroom::mnuOTAnalysis_Click);
}

void Tallyroom::connectAnswers() {
    m_popup->setObjectName(QStringLiteral("mnuPopup"));
    m_popup->addActions({m_ui->mnuAccept, m_ui->mnuDecline});
    m_popup->addSeparator();
    m_popup->addActions({m_ui->mnuAcceptWithComment, m_ui->mnuDeclineWithComment});
    onTriggered(m_ui->mnuAccept, &Tallyroom::mnuAccept_Click);
    onTriggered(m_ui->mnuDecline, &Tallyroom::mnuDecline_Click);
    onTriggered(m_ui->mnuAcceptWithComment, &Tallyroom::mnuAcceptWithComment_Click);
    onTriggered(m_ui->mnuDeclineWithComment, &Tallyroom::mnuDeclineWithComment_Click);
    Events::connect(m_ui->Grid, &Grid::popupRequested, this,
                    [this](const QPoint& position) { Grid_MouseUp(position); });
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
    readPeriod();
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
    const QAction* inForce = checkedOrdering();
    const QString caption = inForce ? inForce->property("descr").toString() : QString();
    removeOrderings();
    const Orderings::Stored stored = Orderings::readAll(m_state.DataPath);
    m_status.orderings = stored.unreadable == 0
                             ? QString()
                             : QStringLiteral("%1 orderings left out: the description cannot be "
                                              "read")
                                   .arg(stored.unreadable);
    for (const Ordering& ordering : stored.orderings) {
        addOrdering(ordering.descr, ordering.details);
        if (!caption.isEmpty() && caption == ordering.descr)
            m_orderings.back()->setChecked(true);
    }
}

void Tallyroom::removeOrderings() {
    for (QAction* item : m_orderings)
        delete item;
    m_orderings.clear();
}

// The description is the caption as it stands: an ampersand in it is no mark of a shortcut.
void Tallyroom::addOrdering(const QString& descr, const QString& details) {
    const int index = firstOrdering + static_cast<int>(m_orderings.size());
    auto* item =
        m_ui->MnuOrd->addAction(QString(descr).replace(QLatin1String("&"), QLatin1String("&&")));
    item->setObjectName(QStringLiteral("MnuOrder_%1").arg(index));
    item->setCheckable(true);
    item->setData(details);
    item->setProperty("descr", descr);
    m_orderings.push_back(item);
    Events::connect(item, &QAction::triggered, this, [this, index] { MnuOrder_Click(index); });
}

QAction* Tallyroom::checkedOrdering() const {
    const auto found = std::find_if(m_orderings.begin(), m_orderings.end(),
                                    [](const QAction* item) { return item->isChecked(); });
    return found == m_orderings.end() ? nullptr : *found;
}

// There is no way back to no ordering: the one that is chosen again stays chosen.
void Tallyroom::MnuOrder_Click(int index) {
    if (index == 0) {
        frmTLYROrderList(m_context, this).showModally();
        LoadOrderings();
    } else {
        for (std::size_t at = 0; at < m_orderings.size(); ++at)
            m_orderings[at]->setChecked(static_cast<int>(at) + firstOrdering == index);
    }
    Update();
}

void Tallyroom::Grid_MouseUp(const QPoint& globalPosition) {
    const bool amounts = IsTime(m_ui->Text1->text()) &&
                         (!m_ui->mnuBreakOut->isChecked() || IsTime(m_ui->Text2->text()));
    m_ui->mnuAccept->setEnabled(amounts && Dates::isDate(m_ui->to_date->text()));
    m_ui->mnuDecline->setEnabled(m_ui->mnuAccept->isEnabled());
    m_popup->popup(globalPosition);
}

void Tallyroom::mnuAccept_Click() {
    RecordAnswer(true, false, QString());
}

void Tallyroom::mnuDecline_Click() {
    RecordAnswer(false, true, QString());
}

// There is no window that asks for a comment: the prompt is never set, so that the command ends
// with the platform's error 424 and nothing is recorded.
void Tallyroom::mnuAcceptWithComment_Click() {
    const Variant prompt;
    RecordAnswer(true, false, prompt.toObject().call(QStringLiteral("GetComment")).toText());
}

void Tallyroom::mnuDeclineWithComment_Click() {
    const Variant prompt;
    RecordAnswer(false, true, prompt.toObject().call(QStringLiteral("GetComment")).toText());
}

void Tallyroom::RecordAnswer(bool accept, bool decline, const QString& comment) {
    const QString amount = m_ui->Text1->text();
    if (amount.isEmpty() || !AnswerRecording::isValidAmount(amount)) {
        Messages::show(this,
                       amount.isEmpty() ? QStringLiteral("Overtime field cannot be empty.")
                                        : QStringLiteral("'%1' is not a valid time.").arg(amount),
                       QMessageBox::Information);
        m_ui->Text1->setFocus();
        return;
    }
    WaitPointer::show();
    AnswerRequest request = answerRequest();
    request.accept = accept;
    request.decline = decline;
    request.comment = comment;
    m_status.command.clear();
    AnswerRecording::Result result = AnswerRecording::record(m_state, request);
    if (!result.failure)
        result.failure = showRecorded(result.anyWritten());
    if (result.failure) {
        showAfterFailure(result);
        throw RunError(*result.failure);
    }
    WaitPointer::hide();
}

// Returns what keeps the new figures from being read.
std::optional<RunError> Tallyroom::showRecorded(bool anyWritten) {
    try {
        m_state.rows().requery();
    } catch (const RunError& error) {
        return error;
    }
    if (!fillBoard() && anyWritten)
        ownUpToOldFigures();
    return std::nullopt;
}

// What the controls say; the answer itself is the command's.
AnswerRequest Tallyroom::answerRequest() const {
    AnswerRequest request;
    request.breakOut = m_ui->mnuBreakOut->isChecked();
    request.multiply = m_ui->mnuMult->isChecked();
    request.amount = m_ui->Text1->text();
    request.doubleAmount = m_ui->Text2->text();
    request.canvassDate = m_ui->to_date->text();
    // The department is read from the heading row, whichever employee answers; hosts' histories
    // have always had that text there.
    request.department = m_ui->Grid->text(0, 2);
    request.user = m_context.CurrentUser;
    request.employees = selectedEmployees();
    return request;
}

// What is written must be seen to be, lest it be given again.
void Tallyroom::showAfterFailure(const AnswerRecording::Result& result) {
    if (!result.anyWritten()) {
        m_status.command = QStringLiteral("Nothing was recorded");
        return showStatus();
    }
    m_ui->Grid->clearSelection();
    m_status.command =
        QStringLiteral("Recorded for %1 of %2").arg(result.recorded).arg(result.employees);
    if (result.partly)
        m_status.command += QStringLiteral(", for %1 in part").arg(*result.partly);
    if (!rebuildQuietly())
        ownUpToOldFigures();
}

// Who does not see that an answer is recorded gives it again.
void Tallyroom::ownUpToOldFigures() {
    m_ui->Grid->clearSelection();
    m_status.stale = true;
    showStatus();
}

// The failure that led here is reported; no other question is asked.
bool Tallyroom::rebuildQuietly() {
    if (!QuickBuild::run(m_state, m_context.BucketForm, m_ui->mnuMult->isChecked()))
        return false;
    m_status.stale = false;
    return fillBoard();
}

QStringList Tallyroom::selectedEmployees() const {
    const Grid::RowRange rows = m_ui->Grid->selectedRows();
    QStringList codes;
    for (int row = rows.first; row <= rows.last; ++row)
        codes.append(m_ui->Grid->text(row, 0));
    return codes;
}

} // namespace tallyroom
