// Orderings from the editor to the sorted grid, in the real windows.
#include "ordering/Orderings.h"
#include "tests/canvass/Board.h"

#include <QComboBox>
#include <QListWidget>

using namespace tallyroom;

namespace {

class OrderingRoundTripTest : public BoardTest {
protected:
    static void checkElement(QWidget& editor, const QString& name) {
        auto& list = child<QListWidget>(editor, QStringLiteral("List1"));
        list.findItems(name, Qt::MatchExactly).constFirst()->setCheckState(Qt::Checked);
    }

    static QString codes(QWidget& board) {
        QStringList result;
        for (int row = 1; row < grid(board).rows(); ++row)
            result.append(grid(board).text(row, 0));
        return result.join(u' ');
    }

    // An ordering by one element.
    void store(const QString& element, int direction) const {
        Orderings::remove(folder.path(), QStringLiteral("Test"));
        Orderings::add(folder.path(), {QStringLiteral("Test"),
                                       QStringLiteral("%1_State=True|%1_Direction=%2|Index0=%1")
                                           .arg(element)
                                           .arg(direction)});
    }
};

TEST_F(OrderingRoundTripTest, DefineChooseEditDelete) {
    const QString newest = QStringLiteral("Newest & first");
    show([&](QWidget& board) {
        script.expectWindow(QStringLiteral("frmTLYROrderList"), [&](QWidget& list) {
            script.expectWindow(QStringLiteral("frmTLYROrders"), [&](QWidget& editor) {
                child<QLineEdit>(editor, QStringLiteral("Text2")).setText(newest);
                checkElement(editor, QStringLiteral("Seniority Date"));
                clickButton(editor, QStringLiteral("Command1"));
            });
            clickButton(list, QStringLiteral("Command1"));
            clickButton(list, QStringLiteral("Command4"));
        });
        trigger(board, QStringLiteral("MnuOrder_0"));
        EXPECT_EQ(child<QAction>(board, QStringLiteral("MnuOrder_2")).text(),
                  QStringLiteral("Newest && first"));
        trigger(board, QStringLiteral("MnuOrder_2"));
        EXPECT_EQ(codes(board), QStringLiteral("E1 E2 E3"));

        script.expectWindow(QStringLiteral("frmTLYROrderList"), [&](QWidget& list) {
            child<QListWidget>(list, QStringLiteral("List1")).setCurrentRow(0);
            script.expectWindow(QStringLiteral("frmTLYROrders"), [&](QWidget& editor) {
                child<QListWidget>(editor, QStringLiteral("List1")).setCurrentRow(4);
                auto& direction = child<QComboBox>(editor, QStringLiteral("Combo1"));
                direction.setCurrentIndex(1);
                Q_EMIT direction.activated(1);
                clickButton(editor, QStringLiteral("Command1"));
            });
            clickButton(list, QStringLiteral("Command2"));
            clickButton(list, QStringLiteral("Command4"));
        });
        trigger(board, QStringLiteral("MnuOrder_0"));
        EXPECT_TRUE(child<QAction>(board, QStringLiteral("MnuOrder_2")).isChecked())
            << "the ordering in force survives the reload";
        EXPECT_EQ(codes(board), QStringLiteral("E3 E2 E1"));

        script.expectWindow(QStringLiteral("frmTLYROrderList"), [&](QWidget& list) {
            child<QListWidget>(list, QStringLiteral("List1")).setCurrentRow(0);
            script.expectBox(
                QStringLiteral("Do you really want to delete this user-defined ordering?"),
                QMessageBox::Yes);
            clickButton(list, QStringLiteral("Command3"));
            clickButton(list, QStringLiteral("Command4"));
        });
        trigger(board, QStringLiteral("MnuOrder_0"));
        EXPECT_FALSE(board.findChild<QAction*>(QStringLiteral("MnuOrder_2")));
    });
}

// The totals of the three employees differ in every column, so that each element gives an order of
// its own; E3 has no history and thus Nulls in the worked columns.
TEST_F(OrderingRoundTripTest, EveryElementSortsBothWays) {
    for (const char* row : {"'E1', 'B', True", "'E2', 'A', True"})
        folder.execute(hostFile, QStringLiteral("Insert Into [Emp_Qualifications] ([Emp_Code], "
                                                "[Qual_Code], [Default]) Values (%1);")
                                     .arg(QString::fromLatin1(row)));
    folder.addHistory(QStringLiteral("E1"), QStringLiteral("1/1/2020"), 100, 10);
    folder.addHistory(QStringLiteral("E2"), QStringLiteral("1/1/2020"), 50, 80);
    for (const char* row : {"'E1', 5, 40, 30, 0", "'E2', 20, 10, 10, 5"})
        folder.execute(hostFile,
                       QStringLiteral("Insert Into [TimeHistory] ([thist_emp], [shift_date], "
                                      "[thist_record_type], [tlyrAccepted], [tlyrAccepted2], "
                                      "[tlyrDeclined], [tlyrDeclined2]) Values (%1);")
                           .arg(QString::fromLatin1(row).replace(
                               QStringLiteral("', "), QStringLiteral("', #1/1/2020#, 'AR', "))));
    const struct {
        const char16_t* element;
        QString ascending;
        QString multiplied; // ascending, with the multiplier on
    } cases[] = {
        {u"Employee Code", QStringLiteral("E1 E2 E3"), QStringLiteral("E1 E2 E3")},
        {u"Employee Name", QStringLiteral("E1 E2 E3"), QStringLiteral("E1 E2 E3")},
        {u"Home Department", QStringLiteral("E3 E1 E2"), QStringLiteral("E3 E1 E2")},
        {u"Position", QStringLiteral("E3 E2 E1"), QStringLiteral("E3 E2 E1")},
        {u"Seniority Date", QStringLiteral("E1 E2 E3"), QStringLiteral("E1 E2 E3")},
        {u"Seniority Number", QStringLiteral("E3 E2 E1"), QStringLiteral("E3 E2 E1")},
        {u"1.5", QStringLiteral("E3 E2 E1"), QStringLiteral("E3 E2 E1")},
        {u"2.0", QStringLiteral("E3 E1 E2"), QStringLiteral("E3 E1 E2")},
        {u"Worked Overtime", QStringLiteral("E3 E1 E2"), QStringLiteral("E3 E1 E2")},
        {u"Accepted 1.5", QStringLiteral("E3 E1 E2"), QStringLiteral("E3 E1 E2")},
        {u"Accepted 2.0", QStringLiteral("E3 E2 E1"), QStringLiteral("E3 E2 E1")},
        {u"Declined 1.5", QStringLiteral("E3 E2 E1"), QStringLiteral("E3 E2 E1")},
        {u"Declined 2.0", QStringLiteral("E3 E1 E2"), QStringLiteral("E3 E1 E2")},
        {u"Accepted Overtime", QStringLiteral("E3 E2 E1"), QStringLiteral("E3 E2 E1")},
        {u"Declined Overtime", QStringLiteral("E3 E2 E1"), QStringLiteral("E3 E2 E1")},
        {u"Total Overtime", QStringLiteral("E3 E2 E1"), QStringLiteral("E3 E1 E2")},
    };
    show([&](QWidget& board) {
        for (const auto& c : cases) {
            for (const int direction : {0, 1}) {
                store(QString::fromUtf16(c.element), direction);
                script.expectWindow(QStringLiteral("frmTLYROrderList"), [](QWidget& list) {
                    clickButton(list, QStringLiteral("Command4"));
                });
                trigger(board, QStringLiteral("MnuOrder_0"));
                trigger(board, QStringLiteral("MnuOrder_2"));
                for (const QString& expected : {c.ascending, c.multiplied}) {
                    QStringList order = expected.split(u' ');
                    if (direction == 1)
                        std::reverse(order.begin(), order.end());
                    EXPECT_EQ(codes(board), order.join(u' '))
                        << QString::fromUtf16(c.element).toStdString() << " " << direction;
                    trigger(board, QStringLiteral("mnuMult"));
                }
            }
        }
    });
}

TEST_F(OrderingRoundTripTest, TiesKeepTheOrderOfTheBoard) {
    folder.execute(hostFile, QStringLiteral("Update [Employee] Set [emp_dept] = 'D';"));
    store(QStringLiteral("Home Department"), 1);
    show([&](QWidget& board) {
        trigger(board, QStringLiteral("MnuOrder_2"));
        EXPECT_EQ(codes(board), QStringLiteral("E1 E2 E3"));
    });
}

} // namespace
