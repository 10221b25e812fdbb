// A supervisor's first day, from the host's call to recorded answers.
#include "common/DateParser.h"
#include "tests/system/SystemFixture.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QPushButton>

using namespace tallyroom;

namespace {

class FirstDayTest : public SystemTest {
protected:
    FirstDayTest() : SystemTest(true) {}

    static void pressOk(QWidget& window) {
        child<QDialogButtonBox>(window, u"Buttons").button(QDialogButtonBox::Ok)->click();
    }

    void definePeriod(QWidget& board) {
        script.expectWindow(u"frmTLYRPeriod", [this](QWidget& window) {
            clickButton(window, u"SSCheck1");
            script.expectWindow(u"frmDatePicker", [](QWidget& picker) {
                child<QCalendarWidget>(picker, u"MonthView1").setSelectedDate(QDate(2024, 3, 1));
                pressOk(picker);
            });
            clickButton(window, u"SSCommand2");
            EXPECT_EQ(child<QLineEdit>(window, u"Text1").text(), QStringLiteral("03/01/2024"));
            type(window, u"Text2", u"3/31/2024");
            clickButton(window, u"Command1");
        });
        trigger(board, u"mnuDefinePeriod");
    }

    // Takes everybody off the board but those whom a search finds.
    void selectBySearch(QWidget& board, const QString& text) {
        script.expectWindow(u"frmBucket", [text](QWidget& bucket) {
            clickButton(bucket, u"ClearShown");
            type(bucket, u"Search", text);
            clickButton(bucket, u"SelectShown");
            pressOk(bucket);
        });
        trigger(board, u"mnuBuckets");
    }

    // The worked minutes of an employee in the period, by an obvious count.
    int workedMinutes(const QString& code) const {
        double minutes = 0;
        for (const QString& line :
             rows(u"bcx.mdb", QStringLiteral("Select [t15], [t20], [shift_date] from [TimeHistory] "
                                             "where [thist_emp] = '%1' and [thist_record_type] in "
                                             "('TR', 'AR', 'HR');")
                                  .arg(code))) {
            const QStringList cells = line.split(u'|');
            const QDate day = Dates::dayOf(*Dates::parse(cells[2]));
            if (day >= QDate(2024, 3, 1) && day <= QDate(2024, 3, 31))
                minutes += (cells[0].toDouble() + cells[1].toDouble()) * 1440;
        }
        return qRound(minutes);
    }
};

TEST_F(FirstDayTest, GoesFromTheWelcomeToTheRecordedAnswers) {
    const QStringList codes =
        rows(u"bcx.mdb", u"Select [emp_code] from [Employee] order by [emp_code];");
    script.expectBox(
        QStringLiteral("Welcome to the Tallyroom!\n\nThis add-in for Brightclock requires some "
                       "setup to occur prior to starting. After clicking [Ok] below, you will be "
                       "taken to a new window which will ask you to associate two absent codes; "
                       "one to identify ACCEPTED overtime, and another to identify DECLINED "
                       "overtime."),
        QMessageBox::Ok, QMessageBox::Information);
    script.expectWindow(u"frmTLYRAssoc", [](QWidget& window) {
        choose(window, u"Combo1", u"OTACC15");
        choose(window, u"Combo2", u"OTDEC15");
        clickButton(window, u"Command2");
    });
    openBoard(QStringLiteral("master"), [&](QWidget& board) {
        EXPECT_EQ(grid(board).model()->rowCount(), 12);
        definePeriod(board);
        for (const QString& code : codes)
            EXPECT_EQ(cell(board, rowOf(board, code), u"OT Worked"),
                      QStringLiteral("%1:%2")
                          .arg(workedMinutes(code) / 60, 2, 10, QLatin1Char('0'))
                          .arg(workedMinutes(code) % 60, 2, 10, QLatin1Char('0')));
        selectBySearch(board, codes[2]);
        EXPECT_EQ(grid(board).model()->rowCount(), 1);
        selectBySearch(board, QString());
        EXPECT_EQ(grid(board).model()->rowCount(), 12);

        type(board, u"to_date", u"3/15/2024");
        type(board, u"Text1", u"7.5");
        answer(board, codes[0], u"mnuAccept");
        EXPECT_EQ(cell(board, rowOf(board, codes[0]), u"OT Accepted"), QStringLiteral("07:30"));
        type(board, u"Text1", u"1:15");
        answer(board, codes[1], u"mnuDecline");
        EXPECT_EQ(cell(board, rowOf(board, codes[1]), u"OT Declined"), QStringLiteral("01:15"));

        trigger(board, u"mnuBreakOut");
        script.expectWindow(u"frmTLYRAssoc2", [](QWidget& window) {
            choose(window, u"Combo3", u"OTACC20");
            choose(window, u"Combo4", u"OTDEC20");
            clickButton(window, u"Command2");
        });
        trigger(board, u"mnuAssoc");
        type(board, u"Text2", u"24:00");
        answer(board, codes[2], u"mnuAccept");
        trigger(board, u"mnuMult");
        EXPECT_EQ(cell(board, rowOf(board, codes[2]), u"2.0 Accepted"), QStringLiteral("48:00"));
        trigger(board, u"mnuRefresh");
        EXPECT_EQ(cell(board, rowOf(board, codes[2]), u"2.0 Accepted"), QStringLiteral("48:00"))
            << "the count over the time history says the same";
    });
    EXPECT_EQ(history(),
              QStringList({codes[0] + QStringLiteral("|3/15/2024|OTACC15|450|Null|Null|Null"),
                           codes[1] + QStringLiteral("|3/15/2024|OTDEC15|Null|Null|75|Null"),
                           codes[2] + QStringLiteral("|3/15/2024|OTACC15|75|Null|Null|Null"),
                           codes[2] + QStringLiteral("|3/15/2024|OTACC20|Null|1440|Null|Null")}));
    EXPECT_EQ(
        audit(),
        QStringList({QStringLiteral("master|%1|3/15/2024|0|450|tlyrAccepted").arg(codes[0]),
                     QStringLiteral("master|%1|3/15/2024|1|75|tlyrDeclined").arg(codes[1]),
                     QStringLiteral("master|%1|3/15/2024|0|75|tlyrAccepted").arg(codes[2]),
                     QStringLiteral("master|%1|3/15/2024|0|1440|tlyrAccepted2").arg(codes[2])}));
    if (testsOnServer())
        return; // there the board's table is the module's own
    EXPECT_EQ(rows(u"vrlxdb01.mdb",
                   QStringLiteral("Select [xT15Accepted], [xT20Accepted], [T20Accepted] from "
                                  "[tlyrTemp] where [emp_code] = '%1';")
                       .arg(codes[2])),
              QStringList(QStringLiteral("75|1440|2880")));
}

TEST_F(FirstDayTest, ShortcutsOpenTheHostsScreens) {
    data.open(QStringLiteral("aidb01.mdb"))
        ->execute(QStringLiteral("Insert Into [tlyr_assoc] ([Accepted], [Declined]) Values "
                                 "('OTACC15', 'OTDEC15');"));
    openBoard(QString(), [&](QWidget& board) {
        const struct {
            const char16_t* entry;
            const char16_t* screen;
            QString title;
        } screens[] = {
            {u"mnuETA", u"frmTransactions", QStringLiteral("Time and Attendance Transactions")},
            {u"mnuDSched", u"frmSchedule", QStringLiteral("Daily Schedule")},
            {u"mnuWSched", u"frmSchedule", QStringLiteral("Weekly Schedule")},
            {u"mnuMSched", u"frmSchedule", QStringLiteral("Monthly Schedule")},
            {u"mnuOTAnalysis", u"frmOvertime", QStringLiteral("Overtime Analysis")}};
        for (const auto& c : screens) {
            script.expectWindow(c.screen, [&c](QWidget& window) {
                EXPECT_EQ(window.windowTitle(), c.title);
                EXPECT_GT(grid(window).model()->rowCount(), 1);
                child<QDialogButtonBox>(window, u"Buttons")
                    .button(QDialogButtonBox::Close)
                    ->click();
            });
            trigger(board, c.entry);
        }
    });
}

TEST_F(FirstDayTest, TheHostKnowsTheAddInByItsDescriptionOnly) {
    host::Options options;
    options.dataFolder = data.path();
    options.moduleFile = QStringLiteral(TALLYROOM_MODULE);
    host::Host running(options);
    running.callEntry(QStringLiteral("Smallforge"));
    EXPECT_EQ(errorNumberOf([&] { running.callEntry(QStringLiteral("Else")); }), 438);
    running.showMenu();
    QStringList captions;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* menu = window->findChild<QMenu*>(QStringLiteral("mnuAddIns"))) {
            for (const QAction* action : menu->actions())
                captions.append(action->objectName() + u'=' + action->text() + u' ' +
                                action->statusTip());
        }
    }
    EXPECT_EQ(captions, QStringList({QStringLiteral("TLYRShow=Tallyroom OXA"), QStringLiteral("= "),
                                     QStringLiteral("Smallforge=Database Structure ")}));
}

} // namespace
