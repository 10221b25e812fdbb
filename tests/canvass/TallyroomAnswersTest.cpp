#include "audit/Standing.h"
#include "tests/canvass/Board.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QListWidget>
#include <QMenu>
#include <QStatusBar>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace tallyroom;

void BoardTest::answer(QWidget& board, QStringView entry) {
    Grid& shown = grid(board);
    auto& popup = child<QMenu>(board, u"mnuPopup");
    const QModelIndex row = shown.currentIndex();
    QTest::mouseClick(shown.viewport(), Qt::RightButton, {}, shown.visualRect(row).center());
    EXPECT_TRUE(popup.isVisible());
    auto& action = child<QAction>(board, entry);
    EXPECT_TRUE(action.isEnabled()) << action.objectName().toStdString();
    QTest::mouseClick(&popup, Qt::LeftButton, {}, popup.actionGeometry(&action).center());
}

namespace {

class TallyroomAnswersTest : public BoardTest {
protected:
    QStringList audit() const {
        return folder.rows(addInFile,
                           u"Select [Emp_Code], [Action], [OT], [tHistField] from [TLYR_Audit];");
    }
};

TEST_F(TallyroomAnswersTest, TheHeadingOpensThePopupToo) {
    show([&](QWidget& board) {
        QWidget* heading = grid(board).horizontalHeader()->viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                                heading->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(heading, &event);
        auto& popup = child<QMenu>(board, u"mnuPopup");
        EXPECT_TRUE(popup.isVisible());
        popup.close();
    });
}

TEST_F(TallyroomAnswersTest, SelectedRowsAreRecordedWhicheverWayTheyWereSelected) {
    show([&](QWidget& board) {
        type(board, u"Text1", u"2:15");
        select(board, 3, 2);
        answer(board, u"mnuAccept");
        EXPECT_EQ(audit(), QStringList({QStringLiteral("E2|0|135|tlyrAccepted"),
                                        QStringLiteral("E3|0|135|tlyrAccepted")}));
        EXPECT_TRUE(lines(board).value(2).endsWith(QStringLiteral("02:15|00:00|02:15")));
        grid(board).setCurrentRow(1);
        answer(board, u"mnuDecline");
        EXPECT_EQ(audit().value(2), QStringLiteral("E1|1|135|tlyrDeclined"))
            << "who is under the pointer";
        EXPECT_EQ(grid(board).currentIndex().row(), 1) << "the next one";
    });
    EXPECT_EQ(folder.rows(hostFile, u"Select [thist_dept] from [TimeHistory];").value(0),
              QStringLiteral("Dept"))
        << "the heading's text";
}

TEST_F(TallyroomAnswersTest, WhereSomebodyStoodIsWhatTheBoardShowed) {
    show([&](QWidget& board) {
        type(board, u"Text1", u"2:00");
        for (const int row : {3, 1}) {
            QStringList shown;
            for (const QString& line : lines(board).mid(1, row))
                shown << line.section(u'|', 0, 0) + u'|' + line.section(u'|', -1);
            grid(board).setCurrentRow(row);
            answer(board, u"mnuAccept");
            const QString kept =
                folder
                    .rows(addInFile,
                          u"Select [Details] from [TLYR_Standing] where IsNull([Emp_Code]);")
                    .last();
            const auto snapshot = Standing::fromText(kept);
            ASSERT_TRUE(snapshot);
            QStringList stood;
            for (const Standing::Listed& each : snapshot->rows)
                stood << each.code + u'|' + each.total;
            EXPECT_EQ(stood, shown);
        }
    });
}

TEST_F(TallyroomAnswersTest, ThePopupIsEnabledByAmountsAndDate) {
    show([&](QWidget& board) {
        const auto enabled = [&](const QString& one, const QString& two, const QString& date) {
            child<QLineEdit>(board, u"Text1").setText(one);
            child<QLineEdit>(board, u"Text2").setText(two);
            child<QLineEdit>(board, u"to_date").setText(date);
            QTest::mouseClick(grid(board).viewport(), Qt::RightButton, {}, QPoint(20, 20));
            child<QMenu>(board, u"mnuPopup").close();
            EXPECT_EQ(child<QAction>(board, u"mnuAccept").isEnabled(),
                      child<QAction>(board, u"mnuDecline").isEnabled());
            return child<QAction>(board, u"mnuAccept").isEnabled();
        };
        const QString time = QStringLiteral("1:00");
        const QString date = QStringLiteral("01/02/2020");
        EXPECT_TRUE(enabled(time, QString(), date));
        EXPECT_FALSE(enabled(QStringLiteral("1"), QString(), date));
        EXPECT_FALSE(enabled(time, QString(), QStringLiteral("13/45/2008")));
        trigger(board, u"mnuBreakOut");
        EXPECT_FALSE(enabled(time, QString(), date));
        EXPECT_TRUE(enabled(time, time, date));
    });
}

TEST_F(TallyroomAnswersTest, ABadAmountIsRefusedAndGetsTheFocus) {
    show([&](QWidget& board) {
        select(board, 1, 1);
        const struct {
            const char16_t* amount;
            QString message;
        } cases[] = {
            {u"", QStringLiteral("Overtime field cannot be empty.")},
            {u"24:01", QStringLiteral("'24:01' is not a valid time.")},
            {u"-1:15", QStringLiteral("'-1:15' is not a valid time.")},
            {u"%1", QStringLiteral("'%1' is not a valid time.")},
        };
        for (const auto& c : cases) {
            type(board, u"Text1", c.amount);
            script.expectBox(c.message, QMessageBox::Ok, QMessageBox::Information);
            child<QAction>(board, u"mnuAccept").setEnabled(true);
            trigger(board, u"mnuAccept");
            EXPECT_EQ(board.focusWidget()->objectName(), QStringLiteral("Text1"));
        }
    });
    EXPECT_TRUE(audit().isEmpty());
}

TEST_F(TallyroomAnswersTest, AfterAFailureTheBoardShowsWhatIsRecorded) {
    folder.execute(hostFile,
                   u"Update [Employee] Set [emp_code] = \"F'3\" Where [emp_code] = 'E3';");
    show([&](QWidget& board) {
        type(board, u"Text1", u"1:00");
        select(board, 2, 3);
        script.expectReport(3077, QStringLiteral("Syntax error (missing "
                                                 "operator) in expression."));
        answer(board, u"mnuAccept");
        EXPECT_TRUE(lines(board).value(2).endsWith(QStringLiteral("01:00|00:00|01:00")));
        EXPECT_FALSE(grid(board).selectionModel()->hasSelection()) << "Accept would repeat E2";
        EXPECT_EQ(status(board), QStringLiteral("Recorded for 1 of 2"));
    });
    EXPECT_EQ(audit(), QStringList(QStringLiteral("E2|0|60|tlyrAccepted")));
}

// A second press is the natural answer to an error: it must not count an answer twice.
TEST_F(TallyroomAnswersTest, AnAnswerThatALockRefusesIsNotDoubledByTheNextPress) {
    show([&](QWidget& board) {
        type(board, u"Text1", u"1:00");
        select(board, 2, 2);
        SQLite::Database other(folder.file(addInFile).toStdString(), SQLite::OPEN_READWRITE);
        other.exec("BEGIN IMMEDIATE");
        script.expectReport(
            3196,
            RunError::make(ErrorNumber::databaseInUse, {folder.file(addInFile)}).description());
        answer(board, u"mnuAccept");
        EXPECT_EQ(status(board), QStringLiteral("Nothing was recorded"));
        other.exec("ROLLBACK");
        answer(board, u"mnuAccept");
        EXPECT_TRUE(status(board).startsWith(QStringLiteral("Accepted 1:00 for Name 2 on ")));
        EXPECT_TRUE(lines(board).value(2).endsWith(QStringLiteral("01:00|00:00|01:00")));
    });
    EXPECT_EQ(audit().size(), 1);
    EXPECT_EQ(folder.rows(hostFile, u"Select [tlyrAccepted] from [TimeHistory];"),
              QStringList(QStringLiteral("60")));
}

// What is written without its audit row counts on the board all the same, or the board says that it
// does not.
TEST_F(TallyroomAnswersTest, AnAnswerWrittenInPartIsShownOrOwnedUpTo) {
    folder.execute(addInFile, u"Drop Table [TLYR_Audit];");
    const QString report = QStringLiteral("Could not find output table 'TLYR_Audit'.");
    const QString unread = QStringLiteral("Who has been asked could not be read: Refresh");
    const QString gap = QStringLiteral("  \u00b7  ");
    show([&](QWidget& board) {
        EXPECT_EQ(status(board), unread);
        type(board, u"Text1", u"1:00");
        grid(board).clearSelection();
        child<QAction>(board, u"mnuAccept").setEnabled(true);
        trigger(board, u"mnuAccept");
        EXPECT_EQ(status(board),
                  QStringLiteral("Nothing was recorded: nobody is selected") + gap + unread);
        select(board, 2, 3);
        script.expectReport(3192, report);
        answer(board, u"mnuAccept");
        EXPECT_EQ(status(board),
                  QStringLiteral("Recorded for 0 of 2, for E2 in part") + gap + unread);
        EXPECT_TRUE(lines(board).value(2).endsWith(QStringLiteral("01:00|00:00|01:00")));
        select(board, 1, 1);
        script.expectReport(3192, report);
        host.onFilterRead = [] { throw RunError::make(ErrorNumber::noSuchMember); };
        answer(board, u"mnuAccept");
        EXPECT_EQ(status(board), QStringLiteral("Recorded for 0 of 1, for E1 in part; the figures "
                                                "are not current: Refresh") +
                                     gap + unread);
        type(board, u"Text1", u"1");
        child<QAction>(board, u"mnuAccept").setEnabled(true);
        script.expectBox(QStringLiteral("'1' is not a valid time."), QMessageBox::Ok,
                         QMessageBox::Information);
        trigger(board, u"mnuAccept");
        EXPECT_TRUE(status(board).contains(QStringLiteral("not current: Refresh"))) << "still";
        host.onFilterRead = {};
        trigger(board, u"mnuRefresh");
        EXPECT_EQ(status(board), unread);
        EXPECT_TRUE(lines(board).value(1).endsWith(QStringLiteral("01:00|00:00|01:00")));
    });
}

TEST_F(TallyroomAnswersTest, ANameThatNoStatementHoldsIsSaidAtOpening) {
    show(
        [&](QWidget& board) {
            EXPECT_EQ(status(board),
                      QStringLiteral("Answers cannot be recorded under the name O'Neil"));
            type(board, u"Text1", u"1:00");
            select(board, 2, 2);
            script.expectReport(3075, QStringLiteral("Syntax error (missing "
                                                     "operator) in query expression ''O'Neil''."));
            answer(board, u"mnuAccept");
        },
        QStringLiteral("O'Neil"));
    EXPECT_TRUE(folder.rows(hostFile, u"Select * from [TimeHistory];").isEmpty());
}

TEST_F(TallyroomAnswersTest, TheStatusBarFollowsWhatAnAnswerGoesBy) {
    folder.addHistory(u"E2", u"1/1/2020", 90, 30);
    show([&](QWidget& board) {
        type(board, u"to_date", u"1/4/2020");
        select(board, 2, 2);
        EXPECT_TRUE(
            status(board).startsWith(QStringLiteral("1 selected: Name 2 \u00b7 Overtime is")));
        type(board, u"Text1", u"7.5");
        EXPECT_TRUE(
            status(board).contains(QStringLiteral("Name 2 \u00b7 7:30 \u00b7 Sat 1/4/2020")));
        trigger(board, u"mnuBreakOut");
        EXPECT_EQ(status(board), QString()) << "nobody is selected after a fill";
        select(board, 2, 3);
        type(board, u"Text2", u"1");
        EXPECT_TRUE(status(board).contains(QStringLiteral("1 is not a time: 1:00 or 1.0")));
        type(board, u"to_date", u"1/");
        EXPECT_TRUE(status(board).contains(QStringLiteral("1/ is not a date")));
        grid(board).clearSelection();
        EXPECT_EQ(status(board), QString());
        const QString figures = QStringLiteral(
            "Totals of all dates  \u00b7  No order  \u00b7  3 employees%1  \u00b7  Ann");
        EXPECT_EQ(child<QLabel>(board, u"lblFigures").text(), figures.arg(QString()));
        host.bucketName = QStringLiteral("Day");
        trigger(board, u"mnuRefresh");
        EXPECT_EQ(child<QLabel>(board, u"lblFigures").text(),
                  figures.arg(QStringLiteral("  \u00b7  Day")));
        child<QLabel>(board, u"lblStatus").setText(QString(500, u'w'));
        QCoreApplication::processEvents();
        EXPECT_LT(board.minimumSizeHint().width(), 660);
        EXPECT_GT(child<QLabel>(board, u"lblFigures").width(), 20) << "can be pointed at";
    });
}

TEST_F(TallyroomAnswersTest, WhoHasBeenAskedForTheDateIsSeen) {
    show([&](QWidget& board) {
        const auto note = [&](int row) { return grid(board).note(row); };
        type(board, u"Text1", u"8:00");
        type(board, u"to_date", u"1/4/2020");
        select(board, 2, 2);
        answer(board, u"mnuDecline");
        EXPECT_TRUE(note(2).startsWith(QStringLiteral("Declined 8:00, ")));
        EXPECT_TRUE(note(2).endsWith(QStringLiteral(" by Ann")));
        EXPECT_EQ(note(1) + note(3), QString());
        const std::vector<int> widths = grid(board).widths();
        trigger(board, u"mnuBlank0");
        EXPECT_FALSE(note(2).isEmpty()) << "another fill";
        grid(board).selectAll();
        EXPECT_TRUE(status(board).startsWith(
            QStringLiteral("3 selected, 1 already answered for Sat 1/4/2020 \u00b7 8:00")));
        type(board, u"to_date", u"1/5/2020");
        EXPECT_TRUE(note(2).isEmpty());
        type(board, u"to_date", u"1/4/2020");
        EXPECT_FALSE(note(2).isEmpty());
        trigger(board, u"mnuBlank0");
        EXPECT_EQ(grid(board).widths(), widths);
        script.expectWindow(u"frmUndo", [](QWidget& undo) {
            child<QListWidget>(undo, u"List1").setCurrentRow(0);
            clickButton(undo, u"Command1");
            clickButton(undo, u"Command2");
        });
        trigger(board, u"mnuUndo");
        EXPECT_TRUE(note(2).isEmpty()) << "taken back";
    });
}

TEST_F(TallyroomAnswersTest, TheOrderFollowsTheNewFigures) {
    folder.execute(addInFile,
                   u"Insert Into [tlyr_order] ([descr], [details]) Values ('Least', 'Index0=Total "
                   u"Overtime|Total Overtime_State=True|Total Overtime_Direction=0');");
    show([&](QWidget& board) {
        trigger(board, u"MnuOrder_2");
        type(board, u"Text1", u"7.5");
        select(board, 1, 1);
        answer(board, u"mnuAccept");
        EXPECT_TRUE(lines(board).last().startsWith(QStringLiteral("E1|")));
        EXPECT_TRUE(lines(board).last().endsWith(QStringLiteral("07:30")));
        EXPECT_FALSE(grid(board).selectionModel()->hasSelection());
    });
}

// Keys record only what the pop-up would have recorded at that moment, and say why not.
TEST_F(TallyroomAnswersTest, KeysAnswerWhereThePopupWould) {
    show([&](QWidget& board) {
        board.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&board));
        const auto key = [&board](int letter) {
            QTest::keyClick(&board, static_cast<Qt::Key>(letter),
                            Qt::ControlModifier | Qt::ShiftModifier);
            return status(board);
        };
        const QString none = QStringLiteral("Nothing was recorded: ");
        type(board, u"Text1", u"1:00");
        EXPECT_EQ(key(Qt::Key_Y), none + QStringLiteral("nobody is selected"));
        select(board, 2, 2);
        type(board, u"Text1", u"8");
        QTest::keyClick(&board, Qt::Key_F, Qt::ControlModifier);
        const QString why = QStringLiteral("8 is not a time: 8:00 or 8.0");
        EXPECT_EQ(key(Qt::Key_Y), none + why);
        EXPECT_EQ(child<QStatusBar>(board, u"StatusBar1").currentMessage(), QString());
        type(board, u"to_date", u"13/45/2008");
        EXPECT_TRUE(status(board).startsWith(QStringLiteral("1 selected"))) << "what is so now";
        EXPECT_EQ(key(Qt::Key_N), none + why + QStringLiteral(" \u00b7 13/45/2008 is not a date"));
        type(board, u"Text1", u"8:00");
        EXPECT_TRUE(audit().isEmpty());
        type(board, u"to_date", u"1/2/2020");
        child<QWidget>(board, u"Text1").setFocus();
        key(Qt::Key_Y);
        EXPECT_TRUE(grid(board).hasFocus());
        QTest::keyClick(&grid(board), Qt::Key_Down);
        key(Qt::Key_N);
        EXPECT_EQ(audit(), QStringList({QStringLiteral("E2|0|480|tlyrAccepted"),
                                        QStringLiteral("E3|1|480|tlyrDeclined")}));
        QTest::keyClick(&board, Qt::Key_F10);
        EXPECT_TRUE(child<QMenu>(board, u"mnuSetup").isVisible());
        child<QMenu>(board, u"mnuSetup").close();
    });
}

} // namespace
