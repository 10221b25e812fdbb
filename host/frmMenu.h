// The host's main window, whose menu handlers add-ins call by name.
#pragma once

#include "common/Objects.h"
#include "host/AddInEntries.h"
#include "host/screens/ScheduleTable.h"
#include "host/screens/ScreenContext.h"
#include "reports/HostData.h"

#include <QImage>
#include <QMainWindow>
#include <QPointer>
#include <memory>

namespace Ui {
class frmMenu;
}

namespace tallyroom::host {

class frmMenu : public QMainWindow {
    Q_OBJECT

public:
    // The data must outlive the window.
    frmMenu(std::shared_ptr<Database> database, const HostData& hostData, const QImage& splash);
    ~frmMenu() override;

    void describe(const QString& dataFolder, const QString& user); // in the status bar

    // Replaces the entries of the add-in menu, each with its method's name as its object name.
    void setEntries(const std::vector<AddInEntry>& entries);

    // Each opens a screen and returns when it is closed. They raise what reading the data raises.
    void ttedit_click();         // time and attendance transactions
    void mnupms_click();         // daily schedule
    void mnuchangesched_click(); // weekly schedule
    void mnuemployeesch_click(); // monthly schedule
    void mnu_ot_anal_click();    // overtime analysis

Q_SIGNALS:
    void entryRequested(const QString& callName);
    void aboutRequested();

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void connectMenus();
    void veilSplash();
    void showSchedule(ScheduleSpan span);
    ScreenContext context();

    std::unique_ptr<Ui::frmMenu> m_ui;
    std::shared_ptr<Database> m_database;
    const HostData& m_data;
    QString m_dataFolder;
    QString m_user;
    QImage m_splash;
    QPixmap m_shown; // the same in the desktop's colours
};

// Methods: the names of the window's menu handlers. Raises 91 once the window has gone.
class MenuObject : public LateBoundObject {
public:
    explicit MenuObject(frmMenu* menu);

private:
    void addHandler(const QString& name, void (frmMenu::*handler)());

    QPointer<frmMenu> m_menu;
};

} // namespace tallyroom::host
