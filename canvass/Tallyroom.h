// The main window: the canvassing board.
#pragma once

#include "canvass/AnswerMenu.h"
#include "canvass/ReportDetails.h"
#include "common/ui/WindowMemory.h"

#include <QEventLoop>
#include <QMainWindow>
#include <memory>

namespace Ui {
class Tallyroom;
}

namespace tallyroom {

class BoardPlaces;
class DateBinding;
class GridFill;

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
    WindowMemory::Remembered remembered();
    void Command1_Click();
    void Command2_Click();

    void connectMenus();
    void connectShortcuts();
    void mnuAssoc_Click();
    void mnuBuckets_Click();
    void mnuDefinePeriod_Click();
    void mnuValidate_Click();
    void mnuUndo_Click();
    void mnuAudit_Click();
    void mnuRefresh_Click();
    void mnuBreakOut_Click();
    void MnuOrder_Click();
    void mnuOTAnalysis_Click();
    void CallHostMenu(const QString& handler);

    void LoadOrderings();
    void firstRunSetup();
    void showBreakOut();
    ReportDetails reportDetails(int employees) const;

    const HostContext& m_context;
    std::unique_ptr<Ui::Tallyroom> m_ui;
    std::unique_ptr<BoardPlaces> m_places;
    std::unique_ptr<ViewMenu> m_view;
    std::unique_ptr<OrderMenu> m_order;
    std::unique_ptr<CanvassBoard> m_board;
    std::unique_ptr<AnswerMenu> m_answers;
    std::unique_ptr<DateBinding> m_dates; // while the window is loaded
    QEventLoop m_loop;                    // runs while the window is shown
    bool m_closing = false;               // set by the only command that closes the window
};

} // namespace tallyroom
