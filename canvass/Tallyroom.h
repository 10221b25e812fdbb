// The main window: the canvassing board.
#pragma once

#include "canvass/AnswerRecording.h"
#include "canvass/BoardStatus.h"
#include "canvass/ViewMenu.h"

#include <QEventLoop>
#include <QLabel>
#include <QMainWindow>
#include <memory>
#include <vector>

namespace Ui {
class Tallyroom;
}

namespace tallyroom {

class DateBinding;

class Tallyroom : public QMainWindow {
    Q_OBJECT

public:
    // The context must outlive the window.
    explicit Tallyroom(const HostContext& context);
    ~Tallyroom() override;

    // Loads the window and shows it until "E&xit <<" closes it. When loading fails the error is
    // shown and no window appears.
    void showModally();

    void Canvass(); // rebuilds the totals, then fills the grid
    void Update();  // fills the grid from the totals

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load();
    void Form_Activate();
    void Form_QueryUnload();
    void Form_Resize();
    void Command1_Click();
    void Command2_Click();

    void onTriggered(QAction* action, void (Tallyroom::*handler)());
    void connectSetupMenus();
    void connectOrderMenu();
    void connectShortcuts();
    void connectAnswers();
    void mnuAssoc_Click();
    void mnuBuckets_Click();
    void mnuDefinePeriod_Click();
    void mnuValidate_Click();
    void mnuUndo_Click();
    void mnuAudit_Click();
    void mnuRefresh_Click();
    void mnuBreakOut_Click();
    void MnuOrder_Click(int index);
    void mnuOTAnalysis_Click();
    void CallHostMenu(const QString& handler);

    void Grid_MouseUp(const QPoint& globalPosition);
    void mnuAccept_Click();
    void mnuDecline_Click();
    void mnuAcceptWithComment_Click();
    void mnuDeclineWithComment_Click();
    // Checks the amount and records the answer for the selected rows.
    void RecordAnswer(bool accept, bool decline, const QString& comment);

    void LoadOrderings();
    void removeOrderings();
    void addOrdering(const QString& descr, const QString& details);
    QAction* checkedOrdering() const;
    void firstRunSetup();
    void readPeriod();
    void showStatus();
    void showBreakOut();
    // Counts the elements of the ordering that the board does not know; they are reported later.
    void fillGrid(int& unknownElements);
    AnswerRequest answerRequest() const;
    void showAfterFailure(const AnswerRecording::Result& result);
    bool rebuildQuietly();
    bool fillBoard(); // false when an error has ended it
    std::optional<RunError> showRecorded(bool anyWritten);
    void ownUpToOldFigures();
    QStringList selectedEmployees() const;
    QStringList reportDetails() const;

    const HostContext& m_context;
    CanvassState m_state;
    std::unique_ptr<Ui::Tallyroom> m_ui;
    std::unique_ptr<ViewMenu> m_view;
    std::vector<QAction*> m_orderings;    // MnuOrder items from 2 on; owned by the menu
    std::unique_ptr<DateBinding> m_dates; // while the window is loaded
    QMenu* m_popup;                       // mnuPopup
    QLabel* m_statusText;                 // in the status bar, which shows it
    BoardStatus m_status;
    bool m_areFilesSound = false; // looked at, which another program may have hindered
    QEventLoop m_loop;            // runs while the window is shown
    bool m_closing = false;       // set by the only command that closes the window
};

} // namespace tallyroom
