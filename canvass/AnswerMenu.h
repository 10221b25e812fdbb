// The menu that pops up over the board: answers of the selected employees.
#pragma once

#include "canvass/CanvassBoard.h"

#include <QMenu>

namespace tallyroom {

class AnswerMenu {
public:
    // All must outlive this.
    AnswerMenu(QWidget& window, const Ui::Tallyroom& ui, const HostContext& context,
               CanvassBoard& board);

private:
    void add(QAction* entry, void (AnswerMenu::*handler)());
    // An entry is chosen by its keys where the menu would offer it; else the board says why not.
    void addKeys(QAction* entry, const QString& keys);
    void answerByKey(QAction& entry);
    bool areAmountsValid() const;
    void enableEntries();
    void Grid_MouseUp(const QPoint& globalPosition);
    void mnuAccept_Click();
    void mnuDecline_Click();
    void mnuAcceptWithComment_Click();
    void mnuDeclineWithComment_Click();
    // Checks the amount and records the answer for the selected rows.
    void RecordAnswer(bool accept, bool decline, const QString& comment);
    AnswerRequest answerRequest() const;

    QWidget& m_window;
    const Ui::Tallyroom& m_ui;
    const HostContext& m_context;
    CanvassBoard& m_board;
    QMenu& m_popup; // mnuPopup; owned by the window
};

} // namespace tallyroom
