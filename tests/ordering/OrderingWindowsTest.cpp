#include "ordering/Orderings.h"
#include "ordering/SettingsText.h"
#include "ordering/frmTLYROrderList.h"
#include "ordering/frmTLYROrders.h"
#include "tests/support/WindowTest.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

using namespace tallyroom;

namespace {

class OrderingWindowsTest : public WindowTest {
protected:
    void edit(const DialogScript::Action& use, const QString& descr = {}) {
        const HostContext context = host.context(folder.path());
        frmTLYROrders window(context);
        if (!descr.isNull())
            window.Load(descr);
        script.expectWindow(u"frmTLYROrders", use);
        window.showModally();
    }
    void store(const QString& descr, const QString& details) const {
        EXPECT_EQ(Orderings::add(folder.path(), {descr, details}), Orderings::SaveResult::Saved);
    }
    static QListWidget& elements(QWidget& window) { return child<QListWidget>(window, u"List1"); }
    static QStringList texts(QWidget& window) {
        QStringList result;
        for (int row = 0; row < elements(window).count(); ++row)
            result.append(elements(window).item(row)->text());
        return result;
    }
    static QString summary(QWidget& window) { return child<QLabel>(window, u"Label1").text(); }
    static void describe(QWidget& window, const QString& text) {
        child<QLineEdit>(window, u"Text2").setText(text);
    }

    const QString up = QStringLiteral("SSCommand1");
    const QString down = QStringLiteral("SSCommand2");
    const QString save = QStringLiteral("Command1");
};

TEST_F(OrderingWindowsTest, ANewOrderingIsStoredInExactlyItsForm) {
    edit([&](QWidget& window) {
        describe(window, QStringLiteral("By code"));
        elements(window).item(0)->setCheckState(Qt::Checked);
        clickButton(window, save);
    });
    const QStringList names =
        QStringLiteral("Employee Code|Employee Name|Home Department|Position|Seniority Date|"
                       "Seniority Number|1.5|2.0|Worked Overtime|Accepted 1.5|Accepted 2.0|"
                       "Declined 1.5|Declined 2.0|Accepted Overtime|Declined Overtime|"
                       "Total Overtime")
            .split(u'|');
    QStringList pairs;
    QStringList positions;
    for (int n = 0; n < names.size(); ++n) {
        pairs +=
            {names[n] + (n == 0 ? QStringLiteral("_State=True") : QStringLiteral("_State=False")),
             QStringLiteral("%1_Order=%2").arg(names[n]).arg(n),
             names[n] + QStringLiteral("_Direction=0")};
        positions.append(QStringLiteral("Index%1=%2").arg(n).arg(names[n]));
    }
    const auto stored = Orderings::read(folder.path(), QStringLiteral("By code"));
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->details, (pairs + positions).join(u'|'));
}

TEST_F(OrderingWindowsTest, MovingAndChoosingByKeyboardAloneRoundTrips) {
    edit([&](QWidget& window) {
        QListWidget& shown = elements(window);
        describe(window, QStringLiteral("Mine"));
        shown.setFocus();
        shown.setCurrentRow(4);
        QTest::keyClick(&shown, Qt::Key_Space);
        EXPECT_EQ(summary(window), QStringLiteral("Seniority Date (Asc)"));
        auto& direction = child<QComboBox>(window, u"Combo1");
        QTest::keyClick(&direction, Qt::Key_Down);
        shown.setCurrentRow(15);
        EXPECT_EQ(direction.currentIndex(), 0) << "the direction belongs to the element";
        QTest::keyClick(&shown, Qt::Key_Space);
        for (int n = 0; n < 14; ++n)
            QTest::keyClick(&shown, Qt::Key_Up, Qt::AltModifier);
        EXPECT_EQ(shown.currentRow(), 1);
        EXPECT_EQ(summary(window), QStringLiteral("Total Overtime (Asc) / Seniority Date (Desc)"));
        clickButton(window, up);
        clickButton(window, up);
        EXPECT_EQ(shown.currentRow(), 0) << "the first stays where it is";
        shown.setCurrentRow(15);
        clickButton(window, down);
        EXPECT_EQ(shown.currentRow(), 15);
        clickButton(window, save);
    });
    edit(
        [&](QWidget& window) {
            EXPECT_FALSE(child<QLineEdit>(window, u"Text2").isEnabled());
            EXPECT_EQ(texts(window).mid(0, 2), QStringList({QStringLiteral("Total Overtime"),
                                                            QStringLiteral("Employee Code")}));
            EXPECT_EQ(summary(window),
                      QStringLiteral("Total Overtime (Asc) / Seniority Date (Desc)"));
            clickButton(window, save);
        },
        QStringLiteral("Mine"));
    const QString details = Orderings::read(folder.path(), QStringLiteral("Mine"))->details;
    for (const auto& [element, rank] :
         std::initializer_list<std::pair<const char*, int>>{{"Total Overtime", 0},
                                                            {"Employee Code", 1},
                                                            {"Seniority Date", 5},
                                                            {"1.5", 7},
                                                            {"Declined Overtime", 15}}) {
        const QString name = QString::fromLatin1(element);
        EXPECT_EQ(GetTagValue(details, QStringLiteral("Index%1=").arg(rank)), name);
        EXPECT_EQ(GetTagValue(details, name + QStringLiteral("_Order")), QString::number(rank));
    }
    EXPECT_EQ(GetTagValue(details, QStringLiteral("Seniority Date_direction")),
              QStringLiteral("1"));
}

TEST_F(OrderingWindowsTest, SavingIsRefusedWithItsReason) {
    store(QStringLiteral("Taken "), QString());
    edit([&](QWidget& window) {
        const auto refused = [&](const QString& message) {
            script.expectBox(message, QMessageBox::Ok, QMessageBox::Critical);
            clickButton(window, save);
        };
        describe(window, QStringLiteral("   "));
        refused(QStringLiteral("A description is required for this user-defined ordering."));
        EXPECT_EQ(window.focusWidget()->objectName(), QStringLiteral("Text2"));
        EXPECT_FALSE(child<QLineEdit>(window, u"Text2").styleSheet().isEmpty());
        describe(window, QStringLiteral(" taken "));
        refused(QStringLiteral("You have not selected any elements."));
        elements(window).item(3)->setCheckState(Qt::Checked);
        refused(QStringLiteral("Duplicate description. Please enter a unique description for this "
                               "user-defined ordering."));
        describe(window, QStringLiteral("Bob's"));
        script.expectReport(3077, QStringLiteral("Syntax error (missing operator) "
                                                 "in expression."));
        clickButton(window, save);
        clickButton(window, u"Command2");
    });
    EXPECT_EQ(Orderings::readAll(folder.path()).orderings.size(), 1U);
}

TEST_F(OrderingWindowsTest, AnOrderingThatWentAwayMeanwhileIsNotSaved) {
    store(QStringLiteral("Short"), QStringLiteral("Index0=Position|Position_State=True"));
    edit(
        [&](QWidget& window) {
            Orderings::remove(folder.path(), QStringLiteral("Short"));
            script.expectBox(QStringLiteral("Error trying to locate record for update."),
                             QMessageBox::Ok, QMessageBox::Critical);
            clickButton(window, save);
            clickButton(window, u"Command2");
        },
        QStringLiteral("Short"));
    script.expectBox(QStringLiteral("Could not load user-defined ordering [Short]"));
    edit([&](QWidget& window) { clickButton(window, u"Command2"); }, QStringLiteral("Short"));
}

TEST_F(OrderingWindowsTest, DamagedTextsLoadWhatCanBeRead) {
    store(QStringLiteral("Partly"),
          QStringLiteral("Position_State=maybe|Position_Direction=down|Index0=Position|"
                         "Index1=Shoe Size|Shoe Size_State=True|Index3=1.5"));
    edit(
        [&](QWidget& window) {
            EXPECT_EQ(texts(window).size(), 17);
            EXPECT_EQ(texts(window).mid(15),
                      QStringList({QStringLiteral("Position"), QStringLiteral("Shoe Size")}));
            elements(window).setCurrentRow(15);
            EXPECT_EQ(summary(window), QStringLiteral("Shoe Size (Asc)"));
            clickButton(window, u"Command2");
        },
        QStringLiteral("Partly"));
}

TEST_F(OrderingWindowsTest, NoDescriptionReachesOtherOrderings) {
    const QString hostile = QStringLiteral("q' or [descr] like 'w*");
    folder.executeNatively(addInFile, "INSERT INTO tlyr_order VALUES ('west', ''), ('wide', ''), "
                                      "('q'' or [descr] like ''w*', '')");
    EXPECT_EQ(errorNumberOf([&] { Orderings::remove(folder.path(), hostile); }), 3075);
    EXPECT_EQ(errorNumberOf([&] { Orderings::read(folder.path(), hostile); }), 3075);
    for (const auto write : {Orderings::add, Orderings::change})
        EXPECT_EQ(errorNumberOf([&] {
                      EXPECT_EQ(write(folder.path(), {hostile, QStringLiteral("x")}),
                                Orderings::SaveResult::Saved);
                  }),
                  3077);
    EXPECT_EQ(folder.rows(addInFile, u"Select [descr], [details] from [tlyr_order];"),
              QStringList(
                  {QStringLiteral("west|"), QStringLiteral("wide|"), hostile + QLatin1Char('|')}));
}

TEST_F(OrderingWindowsTest, AnOrderingThatCannotBeReadIsLeftOut) {
    folder.executeNatively(addInFile,
                           "INSERT INTO tlyr_order VALUES ('whole', x'00'), (x'41', 'details'), "
                           "('short' || char(0) || 'ened', 'details')");
    EXPECT_EQ(Orderings::readAll(folder.path()).unreadable, 2);
    const QString list = QStringLiteral("List1");
    show<frmTLYROrderList>([&](QWidget& window) {
        ASSERT_EQ(child<QListWidget>(window, list).count(), 1);
        EXPECT_EQ(child<QListWidget>(window, list).item(0)->text(), QStringLiteral("whole"));
        clickButton(window, u"Command4");
    });
    edit([&](QWidget& window) { clickButton(window, u"Command2"); }, QStringLiteral("whole"));
}

} // namespace
