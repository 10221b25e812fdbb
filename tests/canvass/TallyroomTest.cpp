#include "tests/canvass/Board.h"

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace tallyroom;

namespace {

using TallyroomTest = BoardTest;

TEST_F(TallyroomTest, ShowsTheSelectedEmployeesAndClosesByExitOnly) {
    folder.addHistory(u"E2", u"1/1/2020", 90, 30);
    show([&](QWidget& board) {
        EXPECT_EQ(lines(board),
                  QStringList(
                      {QStringLiteral("Code|Name|Dept|Phone|Sen. Date|OT Worked|OT Accepted|OT "
                                      "Declined|Total"),
                       QStringLiteral("E1|Name 1|D1|(555) 123-4567|01/01/2001||00:00|00:00|00:00"),
                       QStringLiteral("E2|Name 2|D2|(555) 123-4567|01/02/2001|02:00|00:00|00:00|"
                                      "02:00"),
                       QStringLiteral("E3|Name 3|D0|(555) 123-4567|01/03/2001||00:00|00:00|"
                                      "00:00")}));
        board.close();
        QTest::keyClick(&board, Qt::Key_Escape);
        QTest::keyClick(&board, Qt::Key_F4, Qt::AltModifier);
        EXPECT_TRUE(board.isVisible());
        EXPECT_FALSE(board.windowFlags() & Qt::WindowCloseButtonHint);
        EXPECT_TRUE(grid(board).currentIndex().isValid());
        EXPECT_FALSE(grid(board).selectionModel()->hasSelection());
        auto& exitButton = child<QPushButton>(board, u"Command1");
        exitButton.setFocus();
        QTest::keyClick(&exitButton, Qt::Key_Enter);
        EXPECT_FALSE(board.isVisible());
    });
}

TEST_F(TallyroomTest, OnlyTheMasterSeesHisEntries) {
    for (const auto& [user, visible] : std::initializer_list<std::pair<const char16_t*, bool>>{
             {u"Master", true}, {u"MASTER", true}, {u"*Master*", false}, {u" master", false}}) {
        show(
            [expected = visible](QWidget& board) {
                for (const char16_t* name : {u"mnuDefinePeriod", u"mnuValidate"})
                    EXPECT_EQ(child<QAction>(board, name).isVisible(), expected);
            },
            QString::fromUtf16(user));
    }
}

TEST_F(TallyroomTest, ADamagedFileIsNamedAndLeftAlone) {
    for (const char16_t* name : {mainFile, addInFile}) {
        QFile file(folder.file(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QByteArray sound = file.readAll();
        ASSERT_TRUE(file.seek(sound.size() - 4096) && file.write(QByteArray(60, '\x55')) > 0);
        file.flush();
        const QByteArray damaged =
            QByteArray(sound).replace(sound.size() - 4096, 60, QByteArray(60, '\x55'));
        const HostContext context = host.context(folder.path());
        Tallyroom window(context);
        script.expectReport(
            3049, RunError::make(ErrorNumber::damagedFile, {folder.file(name)}).description());
        window.showModally();
        file.seek(0);
        EXPECT_EQ(file.readAll(), damaged);
        ASSERT_TRUE(file.seek(0) && file.write(sound) > 0);
        file.flush();
    }
}

// Each bad row is left out and counted, and the board opens.
TEST_F(TallyroomTest, OneBadRowClosesNoWindow) {
    folder.executeNatively(hostFile, "INSERT INTO Employee (emp_code, emp_shift) VALUES "
                                     "('E4' || char(0) || 'x', 'S1'), (x'4535', 'S1'), "
                                     "(cast(x'45e936' AS TEXT), 'S1')");
    folder.executeNatively(hostFile, "UPDATE Employee SET emp_name = x'00', phone = x'00', "
                                     "sendate = x'00', Seniority = 'none' WHERE emp_code = 'E2'");
    folder.executeNatively(addInFile,
                           "INSERT INTO tlyr_order VALUES (x'00ff', 'x'), ('Good', x'00')");
    folder.executeNatively(addInFile, "INSERT INTO tlyr_period VALUES ('no date', '2020-01-01')");
    host.filter = QStringLiteral("like '*'");
    script.expectBox(QStringLiteral("The stored totalling period cannot be read: the totals cover "
                                    "all dates."),
                     QMessageBox::Ok, QMessageBox::Warning);
    show([&](QWidget& board) {
        EXPECT_EQ(lines(board).size(), 4);
        EXPECT_EQ(status(board),
                  QStringLiteral("The stored totalling period cannot be read: the totals cover all "
                                 "dates  \u00b7  3 left out: the code cannot be read  \u00b7  1 "
                                 "orderings left out: the description cannot be read"));
        EXPECT_TRUE(child<QAction>(board, u"MnuOrder_2").isVisible());
        trigger(board, u"mnuBlank0");
        trigger(board, u"mnuSenNum");
        EXPECT_EQ(lines(board).size(), 4) << "an unreadable cell is empty";
    });
}

TEST_F(TallyroomTest, AFailingBuildAsksAndAbortLeavesTheOldGrid) {
    show([&](QWidget& board) {
        const QStringList before = lines(board);
        folder.execute(mainFile, u"Drop Table [tlyrTemp];");
        const QString question =
            QStringLiteral("An error has occured.\n\nNumber: \t\t3078\nDescription: \tThe "
                           "Microsoft Jet database engine cannot find the input table or query "
                           "'tlyrTemp'. Make sure it exists and that its name is spelled "
                           "correctly.\nSource: \t\tDAO.Database\n\n");
        script.expectBox(question, QMessageBox::Retry, QMessageBox::Critical);
        script.expectBox(question, QMessageBox::Abort, QMessageBox::Critical);
        trigger(board, u"mnuRefresh");
        EXPECT_EQ(lines(board), before);
        EXPECT_FALSE(QGuiApplication::overrideCursor());
    });
}

TEST_F(TallyroomTest, OptionsChangeTheColumns) {
    folder.addHistory(u"E1", u"1/1/2020", 60, 30);
    show([&](QWidget& board) {
        folder.execute(mainFile,
                       u"Update [tlyrTemp] Set [qual_code] = 'Q', [altphone] = '1', [cellphone] = "
                       u"'2', [pager] = '3', [xT15Accepted] = 11, [xT20Accepted] = 12, "
                       u"[xT15Declined] = 13, [xT20Declined] = 14 Where [emp_code] = 'E1';");
        const char16_t* const added[] = {u"mnuPos", u"mnuAltPhone", u"mnuCellPhone", u"mnuPager"};
        for (const char16_t* name : added)
            trigger(board, name);
        trigger(board, u"mnuSenNum");
        trigger(board, u"mnuBreakOut");
        EXPECT_EQ(lines(board).value(0),
                  QStringLiteral("Code|Name|Dept|Position|Phone|Alt. Phone|Cell Phone|Pager|Sen. "
                                 "Date|Sen. #|1.5|2.0|1.5 Accepted|2.0 Accepted|1.5 Declined|2.0 "
                                 "Declined|Total"));
        EXPECT_EQ(lines(board).value(1),
                  QStringLiteral("E1|Name 1|D1|Q|(555) 123-4567|1|2|3|01/01/2001|99|01:00|00:30|"
                                 "00:11|00:12|00:13|00:14|02:20"));
        for (const char16_t* name : added)
            trigger(board, name);
        EXPECT_EQ(child<QLabel>(board, u"Label3").text(), QStringLiteral("1.5"));
        EXPECT_TRUE(child<QWidget>(board, u"Text2").isVisible());
        trigger(board, u"mnuMult");
        trigger(board, u"mnuBlank0");
        trigger(board, u"mnuDept");
        trigger(board, u"mnuTot_1");
        EXPECT_EQ(
            lines(board).value(1),
            QStringLiteral("E1|Name 1|(555) 123-4567|01/01/2001|99|01:30|01:00|00:16|00:24|00:20|"
                           "00:28|03:18"));
        EXPECT_EQ(lines(board).value(2),
                  QStringLiteral("E2|Name 2|(555) 123-4567|01/02/2001|98|||||||"));
        EXPECT_FALSE(child<QAction>(board, u"mnuTot_0").isChecked());
        trigger(board, u"mnuBreakOut");
        EXPECT_EQ(child<QLabel>(board, u"Label3").text(), QStringLiteral("Overtime"));
        EXPECT_FALSE(child<QWidget>(board, u"Text2").isVisible());
    });
}

TEST_F(TallyroomTest, OrderingsSortAndADamagedOneStopsTheFill) {
    for (const char* row :
         {"'Down', 'Index0=Employee Code|Employee Code_State=True|Employee Code_Direction=1'",
          "'A && B', ''", "'Odd', 'Index0=Shoe Size|Shoe Size_State=True'"})
        folder.execute(addInFile, QStringLiteral("Insert Into [tlyr_order] ([descr], [details]) "
                                                 "Values (%1);")
                                      .arg(QString::fromLatin1(row)));
    show([&](QWidget& board) {
        EXPECT_EQ(child<QAction>(board, u"MnuOrder_3").text(), QStringLiteral("Down"));
        trigger(board, u"MnuOrder_3");
        EXPECT_EQ(lines(board).value(1).left(2), QStringLiteral("E3"));
        trigger(board, u"MnuOrder_3");
        EXPECT_TRUE(child<QAction>(board, u"MnuOrder_3").isChecked());
        script.expectBox(QStringLiteral("Error"));
        trigger(board, u"MnuOrder_4");
        EXPECT_FALSE(child<QAction>(board, u"MnuOrder_3").isChecked());
        EXPECT_EQ(lines(board).size(), 2) << "the heading and one empty row";
        trigger(board, u"MnuOrder_2");
        EXPECT_EQ(lines(board).value(1).left(2), QStringLiteral("E1"));
    });
}

TEST_F(TallyroomTest, AnEmptySelectionKeepsTheHeading) {
    show([&](QWidget& board) {
        const QString heading = lines(board).value(0);
        host.selection = {QStringLiteral("nobody")};
        host.onShowBucket = [&] { host.filter = QStringLiteral("in ('')"); };
        trigger(board, u"mnuBuckets");
        EXPECT_EQ(lines(board), QStringList({heading, QStringLiteral("||||||||")}));
    });
    EXPECT_EQ(host.calls, QStringList({QStringLiteral("FillSpot"), QStringLiteral("Show bucket")}));
}

// Counts the paintings of a widget.
class Paintings : public QObject {
public:
    explicit Paintings(QWidget& widget) { widget.installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

// Everybody, found out slowly: for each employee all others are counted, for each of them all
// others, and so on.
QString slowFilter() {
    QString others = QStringLiteral("-1");
    for (const QChar inner : {u'd', u'c', u'b'})
        others = QStringLiteral("(Select Count(*) From Employee %1 Where %1.emp_code <> %2.emp_code"
                                " And %3 <> 0)")
                     .arg(inner)
                     .arg(QChar(inner.unicode() - 1))
                     .arg(others);
    return QStringLiteral("in (Select a.emp_code From Employee a Where %1 <> 0)").arg(others);
}

TEST_F(TallyroomTest, ABuildShowsTheHourglassOnAWindowThatIsPaintedAgainAndAgain) {
    for (int added = 0; added < 12; ++added)
        folder.execute(hostFile, QStringLiteral("Insert Into [Employee] ([emp_code]) Select "
                                                "[emp_code] & '%1' From [Employee] Where "
                                                "[emp_code] in ('E1', 'E2', 'E3');")
                                     .arg(added));
    show([&](QWidget& board) {
        Paintings paintings(board);
        std::vector<int> atReading; // of the filter, once for each of the two queries
        host.filter = slowFilter();
        host.onFilterRead = [&] {
            atReading.push_back(paintings.count);
            ASSERT_TRUE(QGuiApplication::overrideCursor());
            EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        };
        trigger(board, u"mnuRefresh");
        ASSERT_EQ(atReading.size(), 2U);
        EXPECT_GT(atReading[0], 0);
        EXPECT_GT(paintings.count, atReading[1]) << "nothing was painted during the queries";
        EXPECT_EQ(grid(board).rows(), 1 + 39);
        EXPECT_FALSE(QGuiApplication::overrideCursor());
        host.onFilterRead = {};
    });
}

TEST_F(TallyroomTest, CommandsWithoutTheirWindowReportAndTheBoardLivesOn) {
    show(
        [&](QWidget& board) {
            for (const char16_t* name :
                 {u"mnuValidate", u"mnuAcceptWithComment", u"mnuDeclineWithComment"}) {
                script.expectReport(424, QStringLiteral("Object required"));
                child<QAction>(board, name).trigger();
            }
            trigger(board, u"mnuRefresh");
            EXPECT_EQ(lines(board).size(), 4);
        },
        QStringLiteral("master"));
}

} // namespace
