// What the board remembers for its user, and the report that is printed as its options say.
#include "common/DateParser.h"
#include "common/look/WindowFit.h"
#include "tests/canvass/Board.h"
#include "tests/support/PrintedPages.h"

#include <QScreen>
#include <QTemporaryDir>

using namespace tallyroom;

namespace {

class TallyroomOptionsTest : public BoardTest {
protected:
    TallyroomOptionsTest() {
        for (const char* descr : {"Down", "Up"})
            folder.execute(addInFile,
                           QStringLiteral("Insert Into [tlyr_order] ([descr], [details]) Values "
                                          "('%1', 'Index0=Employee Code|Employee "
                                          "Code_State=True|Employee Code_Direction=%2');")
                               .arg(QString::fromLatin1(descr))
                               .arg(descr[0] == 'D'));
    }

    // The names of the menu entries that are checked.
    static QString checked(QWidget& board) {
        QStringList names;
        for (const QAction* action : board.findChildren<QAction*>()) {
            if (action->isChecked())
                names.append(action->objectName());
        }
        names.sort();
        return names.join(QLatin1Char(' '));
    }

    void expectOptions(const char16_t* user, const char16_t* expected) {
        show([&](QWidget& board) { EXPECT_EQ(checked(board), QString::fromUtf16(expected)); },
             QString::fromUtf16(user));
    }

    const QString title = QStringLiteral("Canvassing Details");
    QTemporaryDir printed;
};

TEST_F(TallyroomOptionsTest, EachUserFindsTheBoardAsHeLeftIt) {
    expectOptions(u"Bob", u"mnuDept mnuSenDate mnuTot_0");
    folder.execute(hostFile, u"Delete * from [FormOptions];");
    show([](QWidget& board) { trigger(board, u"mnuPager"); }, QStringLiteral("Master"));
    show(
        [](QWidget& board) {
            for (const char16_t* entry :
                 {u"mnuDept", u"mnuBreakOut", u"mnuTot_1", u"mnuSigLine", u"MnuOrder_2"})
                trigger(board, entry);
            type(board, u"to_date", u"1/1/2001");
            type(board, u"Text1", u"1:00");
            board.resize(1100, 740);
        },
        QStringLiteral("O'Hara"));
    folder.execute(addInFile, u"Insert Into [tlyr_order] ([descr]) Values ('A');");
    show(
        [&](QWidget& board) {
            EXPECT_EQ(checked(board), QStringLiteral("MnuOrder_3 mnuBreakOut mnuPager mnuSenDate "
                                                     "mnuSigLine mnuTot_1"))
                << "the ordering is known by its description";
            EXPECT_TRUE(lines(board).value(1).startsWith(QStringLiteral("E3|")));
            EXPECT_TRUE(child<QWidget>(board, u"Text2").isVisible());
            EXPECT_EQ(board.size(), QSize(1100, 740).boundedTo(WindowFit::room(board)));
            EXPECT_GT(grid(board).width(), board.width() - 40) << "the controls follow the window";
            EXPECT_EQ(child<QLineEdit>(board, u"Text1").text(), QString());
            EXPECT_EQ(*Dates::parse(child<QLineEdit>(board, u"to_date").text()), Dates::today());
        },
        QStringLiteral("O'HARA"));
    expectOptions(u"Ann", u"mnuDept mnuPager mnuSenDate mnuTot_0");
    EXPECT_EQ(folder.rows(hostFile, u"Select [formname] from [FormOptions];").size(), 3)
        << "one row a user";
    folder.execute(addInFile, u"Delete * from [tlyr_order] where [descr] = 'Down';");
    expectOptions(u"O'Hara", u"mnuBreakOut mnuPager mnuSenDate mnuSigLine mnuTot_1");
}

TEST_F(TallyroomOptionsTest, WithoutTheirTableTheBoardStillOpensAndCloses) {
    folder.execute(hostFile, u"Drop Table [FormOptions];");
    expectOptions(u"Ann", u"mnuDept mnuSenDate mnuTot_0");
}

TEST_F(TallyroomOptionsTest, ThePrintedReportIsTheGridWithItsLines) {
    folder.addHistory(u"E2", u"1/5/2020", 90, 30);
    folder.execute(hostFile, u"Update [Employee] Set [emp_dept] = 'D1';");
    folder.setPeriod(u"1/1/2020", u"1/14/2020");
    show([&](QWidget& board) {
        for (const char16_t* entry :
             {u"mnuBlank0", u"mnuTot_1", u"MnuOrder_2", u"mnuDateLine", u"mnuMult", u"mnuDept"})
            trigger(board, entry);
        type(board, u"to_date", u"11/28/2026");
        type(board, u"Text1", u"7.5");
        const QString file = printed.filePath(QStringLiteral("board.pdf"));
        expectPrinting(script, title, file);
        clickButton(board, u"Command2");
        EXPECT_EQ(titleOf(file), QStringLiteral("Canvassing Details 2026-11-28"));
        const auto pages = readPages(file);
        ASSERT_EQ(pages.size(), 1U);
        const QString text = pages[0].text();
        for (const char* expected :
             {"Canvassing Details", "Totalling Period: 01/01/2020 to 01/14/2020",
              "Total = Worked + Declined (OT hours multiplied by OT value)", "Order: Down",
              "Canvass date: Sat 11/28/2026 \u00b7 7:30 "
              "Department: D1 \u00b7 3 employees",
              "by Ann", "Page 1 of 1", "E3 Name 3 (555) 123-4567 01/03/2001 ____",
              "E2 Name 2 (555) 123-4567 01/02/2001 03:15 03:15 ____"})
            EXPECT_TRUE(text.contains(QString::fromUtf8(expected))) << expected << '\n'
                                                                    << text.toStdString();
        EXPECT_LT(text.indexOf(QLatin1String("E3 Name")), text.indexOf(QLatin1String("E2 Name")));
        EXPECT_FALSE(text.contains(QLatin1String("00:00")));
        EXPECT_FALSE(text.contains(QLatin1String("Signature")));
    });
}

TEST_F(TallyroomOptionsTest, ABoardWithoutAnyColumnIsPrintedAsItsTitle) {
    host.filter = QStringLiteral("in ('')");
    for (const bool signing : {false, true})
        show([&](QWidget& board) {
            EXPECT_EQ(grid(board).columns(), 0);
            if (signing)
                trigger(board, u"mnuSigLine");
            const QString file = printed.filePath(QStringLiteral("%1.pdf").arg(signing));
            expectPrinting(script, title, file);
            clickButton(board, u"Command2");
            const auto pages = readPages(file);
            ASSERT_EQ(pages.size(), 1U);
            EXPECT_TRUE(pages[0].text().startsWith(title));
            EXPECT_EQ(pages[0].text().contains(QStringLiteral("Signature")), signing);
        });
}

} // namespace
