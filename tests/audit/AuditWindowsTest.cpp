#include "audit/frmTLYRAudit.h"
#include "audit/frmUndo.h"
#include "tests/audit/AuditFolder.h"
#include "tests/support/PrintedPages.h"
#include "tests/support/WindowTest.h"

#include <QCheckBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTableView>

using namespace tallyroom;

namespace {

class AuditWindowsTest : public WindowTestOn<AuditFolder> {
protected:
    AuditWindowsTest() { folder.addHost(2); }

    void addTwo() const {
        folder.addAnswer(u"Ann", u"E1", 0, 60, acceptedColumn);
        folder.addAnswer(u"Bob", u"E2", 1, 30, declinedColumn);
    }
    void browse(const DialogScript::Action& use) {
        const HostContext context = host.context(folder.path());
        frmTLYRAudit window(context, [this] { return breakOut; });
        host.selection = {QStringLiteral("E1       Name 1")};
        context.BucketForm.call(QStringLiteral("fillalist"), {window.employees()});
        script.expectWindow(u"frmTLYRAudit", [&](QWidget& shown) {
            use(shown);
            clickButton(shown, u"Command1");
        });
        window.showModally();
    }
    void refused(QWidget& browser, const QString& message) {
        script.expectBox(message, QMessageBox::Ok, QMessageBox::Critical);
        clickButton(browser, query);
        EXPECT_FALSE(QGuiApplication::overrideCursor());
    }
    // Queries and returns how many lines the details window lists.
    int listed(QWidget& browser) {
        int count = -1;
        script.expectWindow(u"frmTLYRAuditDetails", [&](QWidget& details) {
            auto& grid = child<QTableView>(details, u"Grid");
            count = grid.model()->rowCount();
            if (grid.model()->index(0, 1).data().toString().isEmpty())
                count = 0; // the one empty row
            EXPECT_EQ(child<QWidget>(details, u"Command2").isEnabled(), count > 0);
            EXPECT_FALSE(child<QWidget>(details, u"mnuPop").isVisible());
            clickButton(details, u"Command1");
        });
        clickButton(browser, query);
        return count;
    }

    const QString query = QStringLiteral("Command4");
    bool breakOut = false;
};

TEST_F(AuditWindowsTest, AnEmptyAuditSaysSoAndStillOpens) {
    script.expectBox(QStringLiteral("No audit information available."), QMessageBox::Ok,
                     QMessageBox::Critical);
    browse([&](QWidget& browser) {
        EXPECT_FALSE(child<QWidget>(browser, u"Command2").isEnabled());
        refused(browser,
                QStringLiteral("You must select at least one employee before continuing."));
    });
}

TEST_F(AuditWindowsTest, QueryChecksInOrder) {
    addTwo();
    browse([&](QWidget& browser) {
        EXPECT_EQ(child<QListWidget>(browser, u"List2").count(), 1);
        const auto box = [&](const QString& name) -> QLineEdit& {
            return child<QLineEdit>(browser, name);
        };
        const QString illegal = QStringLiteral("Illegal date. Use the format mm/dd/yyyy");
        EXPECT_FALSE(box(QStringLiteral("to_date")).isEnabled());
        clickButton(browser, u"Check1");
        box(QStringLiteral("to_date")).setText(QStringLiteral("13/45/2008"));
        refused(browser, illegal);
        EXPECT_EQ(browser.focusWidget()->objectName(), QStringLiteral("to_date"));
        EXPECT_TRUE(box(QStringLiteral("Text1")).styleSheet().isEmpty());
        box(QStringLiteral("to_date")).setText(QStringLiteral("1/1/2020"));
        refused(browser, illegal);
        EXPECT_FALSE(box(QStringLiteral("Text1")).styleSheet().isEmpty());
        clickButton(browser, u"Check1"); // an unticked range may hold rubbish
        refused(browser, QStringLiteral("You must choose at least one user on which you wish to "
                                        "view Audit information."));
        clickButton(browser, u"Command2");
        EXPECT_EQ(listed(browser), 2);
        clickButton(browser, u"Option3");
        EXPECT_EQ(listed(browser), 1);
        host.filter = QStringLiteral("in ('E1')");
        EXPECT_EQ(listed(browser), 0);
        clickButton(browser, u"Command3");
        refused(browser, QStringLiteral("You must choose at least one user on which you wish to "
                                        "view Audit information."));
    });
}

TEST_F(AuditWindowsTest, TheBrokenOutViewWantsAKind) {
    addTwo();
    breakOut = true;
    browse([&](QWidget& browser) {
        EXPECT_FALSE(child<QWidget>(browser, u"SSPanel1").isVisible());
        clickButton(browser, u"Command2");
        EXPECT_EQ(listed(browser), 2);
        for (const char16_t* box : {u"Check3", u"Check4", u"Check5", u"Check6"})
            clickButton(browser, box);
        refused(browser, QStringLiteral("You haven't selected what you wish to view. Select at "
                                        "least one of the options (Accepted 1.5, 2.0, Declined "
                                        "1.5, 2.0)."));
        clickButton(browser, u"Check4");
        EXPECT_EQ(listed(browser), 1);
    });
}

TEST_F(AuditWindowsTest, TheHostsFilterFillsTheEmployees) {
    addTwo();
    browse([&](QWidget& browser) {
        host.selection = {QStringLiteral("E2       Name 2"), QStringLiteral("E1       Name 1")};
        clickButton(browser, u"SSCommand5");
        EXPECT_EQ(child<QListWidget>(browser, u"List2").count(), 2);
        auto& window = static_cast<frmTLYRAudit&>(browser);
        child<QListWidget>(browser, u"List2").clear();
        window.EnableQuery();
        EXPECT_FALSE(child<QWidget>(browser, query).isEnabled());
    });
    EXPECT_EQ(host.calls,
              QStringList({QStringLiteral("fillalist"), QStringLiteral("FillSpot"),
                           QStringLiteral("AllowSort"), QStringLiteral("Show bucket")}));
}

TEST_F(AuditWindowsTest, TheEntriesArePrintedWithTheChoicesThatFoundThem) {
    addTwo();
    const QTemporaryDir printed;
    const QString file = printed.filePath(QStringLiteral("audit.pdf"));
    browse([&](QWidget& browser) {
        clickButton(browser, u"Command2");
        clickButton(browser, u"Check2");
        child<QLineEdit>(browser, u"Text2").setText(QStringLiteral("2/1/2020"));
        child<QLineEdit>(browser, u"Text3").setText(QStringLiteral("2/29/2020"));
        script.expectWindow(u"frmTLYRAuditDetails", [&](QWidget& details) {
            expectPrinting(script, QStringLiteral("Canvassing Audit"), file);
            clickButton(details, u"Command2");
            clickButton(details, u"Command1");
        });
        clickButton(browser, query);
    });
    const auto pages = readPages(file);
    ASSERT_EQ(pages.size(), 1U);
    for (const char* expected : {"Canvassing Audit", "Users: Ann, Bob", "Employees selected: 1",
                                 "Actions: Accepted, Declined, Deleted", "System Date: all",
                                 "Canvass Date: 2/1/2020 to 2/29/2020",
                                 "01/02/2020 12:00 pm E1 Name 1 Ann 02/03/2020 Accepted 01:00",
                                 "01/02/2020 12:00 pm E2 Name 2 Bob 02/03/2020 Declined 00:30"})
        EXPECT_TRUE(pages[0].text().contains(QLatin1String(expected)))
            << expected << '\n'
            << pages[0].text().toStdString();
}

// The list is in the order of days and codes, so that the latest line stands anywhere in it.
TEST_F(AuditWindowsTest, UndoShowsTheLatestEntryAndTheChosenEmployee) {
    for (int day = 1; day <= 31; ++day) {
        folder.addAnswer(u"Ann", u"E1", 0, day, acceptedColumn, day);
        folder.addAnswer(u"Ann", u"E2", 0, day, acceptedColumn, 2);
    }
    const HostContext context = host.context(folder.path());
    frmUndo window(context, [] { return false; });
    script.expectWindow(u"frmUndo", [](QWidget& undo) {
        auto& list = child<QListWidget>(undo, u"List1");
        const auto& name = child<QLabel>(undo, u"employeeName");
        const auto expectLatest = [&](const QString& line) {
            EXPECT_EQ(list.currentItem()->text(), line);
            EXPECT_TRUE(list.viewport()->rect().contains(list.visualItemRect(list.currentItem())));
            EXPECT_TRUE(list.selectedItems().isEmpty());
            EXPECT_EQ(name.text(), QString());
        };
        expectLatest(QStringLiteral("E1          02/03/2020   Accepted   00:31"));
        list.setCurrentRow(61);
        EXPECT_EQ(name.text(), QStringLiteral("Name 2"));
        list.setCurrentRow(30);
        EXPECT_EQ(name.text(), QStringLiteral("Name 1"));
        clickButton(undo, u"Command1");
        expectLatest(QStringLiteral("E1          02/03/2020   Accepted   00:30"));
        clickButton(undo, u"Command2");
    });
    window.showModally();
}

TEST_F(AuditWindowsTest, TheBrowserRemembersItsKindsButNoDates) {
    addTwo();
    browse([&](QWidget& browser) {
        for (const char16_t* name : {u"Option2", u"Check1"})
            clickButton(browser, name);
        child<QCheckBox>(browser, u"Check4").setChecked(false);
    });
    browse([&](QWidget& browser) {
        for (const auto& [name, checked] :
             std::initializer_list<std::pair<const char16_t*, bool>>{{u"Option1", false},
                                                                     {u"Option2", true},
                                                                     {u"Check1", false},
                                                                     {u"Check3", true},
                                                                     {u"Check4", false}})
            EXPECT_EQ(child<QAbstractButton>(browser, name).isChecked(), checked)
                << QString::fromUtf16(name).toStdString();
    });
}

} // namespace
