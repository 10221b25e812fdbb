#include "canvass/AnswerMenu.h"

#include "canvass/BoardControls.h"
#include "common/DateParser.h"
#include "common/Units.h"
#include "common/ui/Events.h"
#include "common/ui/Messages.h"
#include "common/ui/WaitPointer.h"
#include "ui_Tallyroom.h"

#include <QShortcut>

namespace tallyroom {

AnswerMenu::AnswerMenu(QWidget& window, const Ui::Tallyroom& ui, const HostContext& context,
                       CanvassBoard& board)
    : m_window(window), m_ui(ui), m_context(context), m_board(board),
      m_popup(*new QMenu(QStringLiteral("PopUp"), &window)) {
    m_popup.setObjectName(QStringLiteral("mnuPopup"));
    add(m_ui.mnuAccept, &AnswerMenu::mnuAccept_Click);
    add(m_ui.mnuDecline, &AnswerMenu::mnuDecline_Click);
    m_popup.addSeparator();
    add(m_ui.mnuAcceptWithComment, &AnswerMenu::mnuAcceptWithComment_Click);
    add(m_ui.mnuDeclineWithComment, &AnswerMenu::mnuDeclineWithComment_Click);
    // They record, so that no slip of one finger may press them, nor of the finger that selects
    // all.
    addKeys(m_ui.mnuAccept, QStringLiteral("Ctrl+Shift+Y"));
    addKeys(m_ui.mnuDecline, QStringLiteral("Ctrl+Shift+N"));
    Events::connect(m_ui.Grid, &Grid::popupRequested, &m_window,
                    [this](const QPoint& position) { Grid_MouseUp(position); });
}

void AnswerMenu::add(QAction* entry, void (AnswerMenu::*handler)()) {
    m_popup.addAction(entry);
    Events::connect(entry, &QAction::triggered, &m_window, [this, handler] { (this->*handler)(); });
}

// The entry only shows its keys: as long as the menu is closed it does not know whether it is
// enabled. A key that is held down answers once.
void AnswerMenu::addKeys(QAction* entry, const QString& keys) {
    entry->setShortcut(QKeySequence(keys));
    entry->setShortcutVisibleInContextMenu(true);
    auto* shortcut = new QShortcut(entry->shortcut(), &m_window);
    shortcut->setAutoRepeat(false);
    Events::connect(shortcut, &QShortcut::activated, &m_window,
                    [this, entry] { answerByKey(*entry); });
}

void AnswerMenu::answerByKey(QAction& entry) {
    enableEntries();
    if (m_ui.Grid->selectedRows().first > 0 && entry.isEnabled())
        entry.trigger();
    else
        m_board.refuse();
    m_ui.Grid->setFocus(); // where the next employee is
}

bool AnswerMenu::areAmountsValid() const {
    return IsTime(m_ui.Text1->text()) &&
           (!m_ui.mnuBreakOut->isChecked() || IsTime(m_ui.Text2->text()));
}

void AnswerMenu::enableEntries() {
    m_ui.mnuAccept->setEnabled(areAmountsValid() && Dates::isDate(m_ui.to_date->text()));
    m_ui.mnuDecline->setEnabled(m_ui.mnuAccept->isEnabled());
}

void AnswerMenu::Grid_MouseUp(const QPoint& globalPosition) {
    enableEntries();
    m_popup.popup(globalPosition);
}

void AnswerMenu::mnuAccept_Click() {
    RecordAnswer(true, false, QString());
}

void AnswerMenu::mnuDecline_Click() {
    RecordAnswer(false, true, QString());
}

// There is no window that asks for a comment: the prompt is never set, so that the command ends
// with the platform's error 424 and nothing is recorded.
void AnswerMenu::mnuAcceptWithComment_Click() {
    const Variant prompt;
    RecordAnswer(true, false, prompt.toObject().call(QStringLiteral("GetComment")).toText());
}

void AnswerMenu::mnuDeclineWithComment_Click() {
    const Variant prompt;
    RecordAnswer(false, true, prompt.toObject().call(QStringLiteral("GetComment")).toText());
}

void AnswerMenu::RecordAnswer(bool accept, bool decline, const QString& comment) {
    const QString amount = m_ui.Text1->text();
    if (amount.isEmpty() || !AnswerRecording::isValidAmount(amount)) {
        Messages::show(&m_window,
                       amount.isEmpty() ? QStringLiteral("Overtime field cannot be empty.")
                                        : QStringLiteral("'%1' is not a valid time.").arg(amount),
                       QMessageBox::Information);
        m_ui.Text1->setFocus();
        return;
    }
    AnswerRequest request = answerRequest();
    request.accept = accept;
    request.decline = decline;
    request.comment = comment;
    m_board.record(request);
    WaitPointer::hide();
}

// What the controls say; the answer itself is the command's.
AnswerRequest AnswerMenu::answerRequest() const {
    AnswerRequest request;
    request.breakOut = m_ui.mnuBreakOut->isChecked();
    request.multiply = m_ui.mnuMult->isChecked();
    request.amount = m_ui.Text1->text();
    request.doubleAmount = m_ui.Text2->text();
    request.canvassDate = m_ui.to_date->text();
    // The department is read from the heading row, whichever employee answers, on purpose.
    request.department = m_ui.Grid->text(0, 2);
    request.user = m_context.CurrentUser;
    request.employees = BoardControls::selectedEmployees(m_ui);
    return request;
}

} // namespace tallyroom
