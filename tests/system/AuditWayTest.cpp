// Answers of two users: recorded, browsed, deleted, taken back.
#include "tests/system/SystemFixture.h"

#include <QListWidget>

using namespace tallyroom;

namespace {

class AuditWayTest : public SystemTest {
protected:
    AuditWayTest() : SystemTest(false) {
        data.open(QStringLiteral("aidb01.mdb"))
            ->execute(QStringLiteral("Delete * from [TLYR_Audit];"));
        data.open(QStringLiteral("bcx.mdb"))
            ->execute(QStringLiteral("Delete * from [TimeHistory];"));
        codes = rows(u"bcx.mdb", u"Select [emp_code] from [Employee] order by [emp_code];");
    }

    static void setAnswer(QWidget& board, const QString& one, const QString& two = {}) {
        type(board, u"to_date", u"3/25/2024");
        type(board, u"Text1", one);
        if (!two.isNull())
            type(board, u"Text2", two);
    }

    // Opens the browser with all users, queries, and works the details.
    void browse(QWidget& board, const std::function<void(QWidget&)>& use,
                const std::function<void(QWidget&)>& narrow = {}) {
        script.expectWindow(u"frmTLYRAudit", [this, use, narrow](QWidget& browser) {
            clickButton(browser, u"Command2");
            if (narrow)
                narrow(browser);
            script.expectWindow(u"frmTLYRAuditDetails", [use](QWidget& details) {
                use(details);
                clickButton(details, u"Command1");
            });
            clickButton(browser, u"Command4");
            clickButton(browser, u"Command1");
        });
        trigger(board, u"mnuAudit");
    }

    static QStringList actions(QWidget& details) {
        QStringList result;
        for (int row = 0; row < grid(details).model()->rowCount(); ++row)
            result.append(cell(details, row, u"Code") + u' ' + cell(details, row, u"Action") +
                          u' ' + cell(details, row, u"Time"));
        return result;
    }

    // Takes back the n-th line of the undo list, and says how many lines there were.
    int undo(QWidget& board, int line) {
        int count = 0;
        script.expectWindow(u"frmUndo", [&count, line](QWidget& window) {
            auto& list = child<QListWidget>(window, u"List1");
            count = list.count();
            list.setCurrentRow(line);
            clickButton(window, u"Command1");
            clickButton(window, u"Command2");
        });
        trigger(board, u"mnuUndo");
        return count;
    }

    QStringList codes;
};

TEST_F(AuditWayTest, EachStepLeavesItsTracesInTheFiles) {
    const QString question = QStringLiteral(
        "The action you are about to perform will remove both the Tallyroom Audit entry, as well "
        "as the Absent record in Edit Time and Attendace Transactions.\n\nDo you wish to proceed?");
    openBoard(QStringLiteral("Ann"), [&](QWidget& board) {
        setAnswer(board, QStringLiteral("2:00"));
        answer(board, codes[0], u"mnuAccept");
        answer(board, codes[1], u"mnuDecline");
    });
    openBoard(QStringLiteral("Bob"), [&](QWidget& board) {
        trigger(board, u"mnuBreakOut");
        setAnswer(board, QStringLiteral("1:00"), QStringLiteral("0:30"));
        answer(board, codes[2], u"mnuAccept");
        EXPECT_EQ(history().size(), 4);
        browse(board, [&](QWidget& details) {
            EXPECT_EQ(actions(details),
                      QStringList({codes[0] + QStringLiteral(" Accepted 1.5 02:00"),
                                   codes[1] + QStringLiteral(" Declined 1.5 02:00"),
                                   codes[2] + QStringLiteral(" Accepted 1.5 01:00"),
                                   codes[2] + QStringLiteral(" Accepted 2.0 00:30")}));
            grid(details).selectRow(0);
            script.expectBox(question, QMessageBox::Yes, QMessageBox::Question);
            child<QAction>(details, u"mnuDelete").trigger();
        });
        EXPECT_EQ(history().size(), 4) << "broken-out lines cannot be deleted";

        trigger(board, u"mnuBreakOut");
        browse(
            board,
            [&](QWidget& details) {
                EXPECT_EQ(actions(details),
                          QStringList({codes[0] + QStringLiteral(" Accepted 02:00"),
                                       codes[2] + QStringLiteral(" Accepted 01:00"),
                                       codes[2] + QStringLiteral(" Accepted 00:30")}));
                for (const auto press : {QMessageBox::No, QMessageBox::Yes}) {
                    grid(details).selectRow(0);
                    script.expectBox(question, press, QMessageBox::Question);
                    child<QAction>(details, u"mnuDelete").trigger();
                    EXPECT_EQ(history().size(), press == QMessageBox::No ? 4 : 3);
                }
                EXPECT_EQ(actions(details).value(0), codes[0] + QStringLiteral(" Deleted 02:00"));
            },
            [](QWidget& browser) { clickButton(browser, u"Option2"); });
        EXPECT_EQ(audit().filter(QStringLiteral("|2|120|")).size(), 1);

        EXPECT_EQ(undo(board, -1), 2) << "nothing is selected";
        EXPECT_EQ(undo(board, 0), 2) << "Bob sees his own answers";
        EXPECT_EQ(audit().size(), 3);
        EXPECT_EQ(history().size(), 2);
        EXPECT_EQ(cell(board, rowOf(board, codes[2]), u"OT Accepted"), QStringLiteral("00:30"))
            << "the board was counted anew";
    });
    openBoard(QStringLiteral("master"), [&](QWidget& board) {
        const QStringList before = audit() + history();
        EXPECT_EQ(undo(board, 1), 3) << "the master sees everybody's";
        EXPECT_EQ(audit() + history(), before) << "and takes back only his own";
    });
}

} // namespace
