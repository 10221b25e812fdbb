// Orderings from the editor to the sorted grid, in the real windows.
#include "ordering/Orderings.h"
#include "tests/canvass/Board.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QTest>

using namespace tallyroom;

namespace {

class OrderingRoundTripTest : public BoardTest {
protected:
    static void checkElement(QWidget& editor, const QString& name) {
        auto& list = child<QListWidget>(editor, u"List1");
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
        const QString details =
            QStringLiteral("%1_State=True|%1_Direction=%2|Index0=%1").arg(element).arg(direction);
        EXPECT_EQ(Orderings::add(folder.path(), {QStringLiteral("Test"), details}),
                  Orderings::SaveResult::Saved);
    }

    // Five employees whom each element orders in its own way. E1 has a Null for its position, E5
    // has no history and thus Nulls in the columns of that.
    void addFive() const {
        const auto insert = [&](const char* into, std::initializer_list<const char*> rows) {
            for (const char* row : rows)
                folder.execute(hostFile,
                               QStringLiteral("Insert Into %1 Values (%2);")
                                   .arg(QString::fromLatin1(into), QString::fromLatin1(row)));
        };
        folder.execute(hostFile, u"Delete * from [Employee];");
        insert("[Employee] ([emp_code], [emp_name], [emp_dept], [sendate], [Seniority])",
               {"'E1', 'Dee', 'B', #1/1/2005#, 3", "'E2', 'Eve', 'A', #1/1/2003#, 4",
                "'E3', 'Amy', 'E', #1/1/2004#, 1", "'E4', 'Bob', 'D', #1/1/2001#, 5",
                "'E5', 'Cy', 'C', #1/1/2002#, 2"});
        insert("[Emp_Qualifications] ([Emp_Code], [Qual_Code], [Default])",
               {"'E1', Null, True", "'E2', 'B', True", "'E3', 'D', True", "'E4', 'A', True",
                "'E5', 'C', True"});
        insert("[TimeHistory] ([shift_date], [thist_record_type], [thist_emp], [t15], [t20], "
               "[tlyrAccepted], [tlyrAccepted2], [tlyrDeclined], [tlyrDeclined2])",
               {"#1/1/2020#, 'AR', 'E1', 60/1440, 20/1440, 20, 90, 90, 40",
                "#1/1/2020#, 'AR', 'E2', 20/1440, 80/1440, 90, 50, 10, 60",
                "#1/1/2020#, 'AR', 'E3', 70/1440, 50/1440, 40, 60, 80, 80",
                "#1/1/2020#, 'AR', 'E4', 80/1440, 90/1440, 60, 20, 40, 50"});
    }
};

TEST_F(OrderingRoundTripTest, DefineChooseEditDelete) {
    const QString newest = QStringLiteral("Newest & first");
    show([&](QWidget& board) {
        script.expectWindow(u"frmTLYROrderList", [&](QWidget& list) {
            for (const char16_t* command : {u"Command2", u"Command3"})
                clickButton(list, command); // nothing selected: nothing happens
            script.expectWindow(u"frmTLYROrders", [&](QWidget& editor) {
                child<QLineEdit>(editor, u"Text2").setText(newest);
                checkElement(editor, QStringLiteral("Seniority Date"));
                clickButton(editor, u"Command1");
            });
            clickButton(list, u"Command1");
            clickButton(list, u"Command4");
        });
        trigger(board, u"MnuOrder_0");
        EXPECT_EQ(child<QAction>(board, u"MnuOrder_2").text(), QStringLiteral("Newest && first"));
        trigger(board, u"MnuOrder_2");
        EXPECT_EQ(codes(board), QStringLiteral("E1 E2 E3"));

        script.expectWindow(u"frmTLYROrderList", [&](QWidget& list) {
            script.expectWindow(u"frmTLYROrders", [&](QWidget& editor) {
                child<QListWidget>(editor, u"List1").setCurrentRow(4);
                auto& direction = child<QComboBox>(editor, u"Combo1");
                direction.setCurrentIndex(1);
                Q_EMIT direction.activated(1);
                clickButton(editor, u"Command1");
            });
            auto& shown = child<QListWidget>(list, u"List1");
            const QPoint first = shown.visualItemRect(shown.item(0)).center();
            QTest::mouseClick(shown.viewport(), Qt::LeftButton, {}, first);
            QTest::mouseDClick(shown.viewport(), Qt::LeftButton, {}, first);
            script.expectWindow(u"frmTLYROrders", [&](QWidget& editor) {
                EXPECT_EQ(child<QLabel>(editor, u"Label1").text(),
                          QStringLiteral("Seniority Date (Desc)"));
                clickButton(editor, u"Command2");
            });
            clickButton(list, u"Command2");
            clickButton(list, u"Command4");
        });
        trigger(board, u"MnuOrder_0");
        EXPECT_TRUE(child<QAction>(board, u"MnuOrder_2").isChecked())
            << "the ordering in force survives the reload";
        EXPECT_EQ(codes(board), QStringLiteral("E3 E2 E1"));

        script.expectWindow(u"frmTLYROrderList", [&](QWidget& list) {
            auto& shown = child<QListWidget>(list, u"List1");
            shown.setCurrentRow(0);
            for (const auto press : {QMessageBox::No, QMessageBox::Yes}) {
                script.expectBox(
                    QStringLiteral("Do you really want to delete this user-defined ordering?"),
                    press);
                clickButton(list, u"Command3");
                EXPECT_EQ(shown.count(), press == QMessageBox::No ? 1 : 0);
            }
            clickButton(list, u"Command4");
        });
        trigger(board, u"MnuOrder_0");
        EXPECT_FALSE(board.findChild<QAction*>(QStringLiteral("MnuOrder_2")));
    });
}

TEST_F(OrderingRoundTripTest, EveryElementSortsBothWays) {
    addFive();
    const struct {
        const char16_t* element;
        QString ascending;
        QString multiplied; // with the multiplier on, where that is another order
    } cases[] = {
        {u"Employee Code", QStringLiteral("E1 E2 E3 E4 E5"), {}},
        {u"Employee Name", QStringLiteral("E3 E4 E5 E1 E2"), {}},
        {u"Home Department", QStringLiteral("E2 E1 E5 E4 E3"), {}},
        {u"Position", QStringLiteral("E1 E4 E2 E5 E3"), {}},
        {u"Seniority Date", QStringLiteral("E4 E5 E2 E3 E1"), {}},
        {u"Seniority Number", QStringLiteral("E3 E5 E1 E2 E4"), {}},
        {u"1.5", QStringLiteral("E5 E2 E1 E3 E4"), {}},
        {u"2.0", QStringLiteral("E5 E1 E3 E2 E4"), {}},
        {u"Worked Overtime", QStringLiteral("E5 E1 E2 E3 E4"), {}},
        {u"Accepted 1.5", QStringLiteral("E5 E1 E3 E4 E2"), {}},
        {u"Accepted 2.0", QStringLiteral("E5 E4 E2 E3 E1"), {}},
        {u"Declined 1.5", QStringLiteral("E5 E2 E4 E3 E1"), {}},
        {u"Declined 2.0", QStringLiteral("E5 E1 E4 E2 E3"), {}},
        {u"Accepted Overtime", QStringLiteral("E5 E4 E3 E1 E2"), {}},
        {u"DECLINED overtime", QStringLiteral("E5 E2 E4 E1 E3"), {}},
        {u"Total Overtime", QStringLiteral("E5 E2 E1 E4 E3"), QStringLiteral("E5 E1 E2 E4 E3")},
    };
    show([&](QWidget& board) {
        for (const auto& c : cases) {
            for (const int direction : {0, 1}) {
                store(QString::fromUtf16(c.element), direction);
                script.expectWindow(u"frmTLYROrderList",
                                    [](QWidget& list) { clickButton(list, u"Command4"); });
                trigger(board, u"MnuOrder_0");
                trigger(board, u"MnuOrder_2");
                for (const bool multiply : {false, true}) {
                    const bool other = multiply && !c.multiplied.isEmpty();
                    QStringList order = (other ? c.multiplied : c.ascending).split(u' ');
                    if (direction == 1)
                        std::reverse(order.begin(), order.end());
                    EXPECT_EQ(codes(board), order.join(u' '))
                        << QString::fromUtf16(c.element).toStdString() << " " << direction;
                    trigger(board, u"mnuMult");
                }
            }
        }
        trigger(board, u"mnuMult");
        trigger(board, u"mnuTot_1");
        EXPECT_EQ(codes(board), QStringLiteral("E3 E4 E1 E2 E5")) << "by the total that is shown";
    });
}

TEST_F(OrderingRoundTripTest, TiesKeepTheOrderOfTheBoard) {
    folder.execute(hostFile, u"Delete * from [Employee];");
    for (const char* row : {"'E2', 'D', -0.0", "'E3', 'D', 0", "'E1', 'D', 0.0"})
        folder.execute(hostFile, QStringLiteral("Insert Into [Employee] ([emp_code], [emp_dept], "
                                                "[Seniority]) Values (%1);")
                                     .arg(QString::fromLatin1(row)));
    for (const char* element : {"Home Department", "Seniority Number"}) {
        store(QString::fromLatin1(element), 1);
        show([&](QWidget& board) {
            trigger(board, u"MnuOrder_2");
            EXPECT_EQ(codes(board), QStringLiteral("E2 E3 E1")) << "as they were entered";
        });
    }
}

} // namespace
