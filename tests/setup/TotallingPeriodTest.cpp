#include "setup/TotallingPeriod.h"
#include "setup/frmTLYRPeriod.h"
#include "tests/support/WindowTest.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

using namespace tallyroom;

namespace {

class TotallingPeriodTest : public WindowTest {
protected:
    QStringList stored() const { return folder.rows(addInFile, u"Select * from [tlyr_period];"); }
    static QLineEdit& box(QWidget& window, const QString& name) {
        return child<QLineEdit>(window, name);
    }

    const QString from = QStringLiteral("Text1");
    const QString to = QStringLiteral("Text2");
    const QString save = QStringLiteral("Command1");
};

TEST_F(TotallingPeriodTest, OpensIndefiniteWithoutBothDatesAndSavesBothNull) {
    folder.execute(addInFile, u"Insert Into [tlyr_period] ([from_date]) Values (#1/2/2020#);");
    EXPECT_FALSE(TotallingPeriod::read(folder.path()));
    show<frmTLYRPeriod>([&](QWidget& window) {
        EXPECT_TRUE(child<QCheckBox>(window, u"SSCheck1").isChecked());
        for (const char16_t* name :
             {u"Label1", u"Label3", u"Text1", u"Text2", u"SSCommand1", u"SSCommand2"})
            EXPECT_FALSE(child<QWidget>(window, name).isEnabled());
        box(window, from).setText(QStringLiteral("rubbish"));
        clickButton(window, save);
    });
    EXPECT_EQ(stored(), QStringList(QStringLiteral("Null|Null")));
}

TEST_F(TotallingPeriodTest, EnterPressesTheButtonThatHasTheFocus) {
    const QString exitButton = QStringLiteral("Command2");
    show<frmTLYRPeriod>([&](QWidget& window) {
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible()) << "only its buttons close it";
        child<QWidget>(window, exitButton).setFocus();
        QTest::keyClick(&child<QWidget>(window, exitButton), Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_TRUE(stored().isEmpty()) << "Exit saves nothing";
    show<frmTLYRPeriod>([&](QWidget& window) {
        child<QCheckBox>(window, u"SSCheck1").setFocus();
        QTest::keyClick(&child<QWidget>(window, u"SSCheck1"), Qt::Key_Return);
    });
    EXPECT_EQ(stored().size(), 1) << "Save is the default button";
}

TEST_F(TotallingPeriodTest, ChecksBothDatesAndKeepsOneRow) {
    const QString illegal = QStringLiteral("Illegal date. Use the format MM/DD/YYYY");
    show<frmTLYRPeriod>([&](QWidget& window) {
        child<QCheckBox>(window, u"SSCheck1").click();
        box(window, from).setText(QStringLiteral("13/45/2008"));
        script.expectBox(illegal);
        clickButton(window, save);
        EXPECT_EQ(window.focusWidget()->objectName(), from);
        EXPECT_TRUE(box(window, to).styleSheet().isEmpty()) << "the second is not tested yet";
        box(window, from).setText(QStringLiteral("3/1/2020"));
        script.expectBox(illegal);
        clickButton(window, save);
        EXPECT_FALSE(box(window, from).styleSheet().isEmpty()) << "the red stays";
        EXPECT_FALSE(box(window, to).styleSheet().isEmpty());
        box(window, to).setText(QStringLiteral("2/1/2020"));
        clickButton(window, save);
    });
    EXPECT_EQ(stored(), QStringList(QStringLiteral("3/1/2020|2/1/2020"))) << "as it was typed";
    show<frmTLYRPeriod>([&](QWidget& window) {
        EXPECT_EQ(box(window, from).text(), QStringLiteral("03/01/2020"));
        EXPECT_EQ(box(window, to).text(), QStringLiteral("02/01/2020"));
        clickButton(window, save);
    });
    EXPECT_EQ(stored().size(), 1);
}

TEST_F(TotallingPeriodTest, StoresDaysWithoutATimeOfDay) {
    show<frmTLYRPeriod>([&](QWidget& window) {
        child<QCheckBox>(window, u"SSCheck1").click();
        box(window, from).setText(QStringLiteral("1/5/2026 2:00 PM"));
        box(window, to).setText(QStringLiteral("1/6/2026 11:59:59 PM"));
        clickButton(window, save);
    });
    EXPECT_EQ(stored(), QStringList(QStringLiteral("1/5/2026|1/6/2026")));
}

TEST_F(TotallingPeriodTest, APeriodThatCannotBeReadIsNoIndefiniteOneAndCanBeReplaced) {
    for (const char* values : {"'soon', '2026-01-05 00:00:00'", "'2026-01-05 00:00:00', x'00'",
                               "1e15, 1e15", "-700000, 1"}) {
        folder.executeNatively(addInFile, "DELETE FROM tlyr_period");
        folder.executeNatively(
            addInFile, (std::string("INSERT INTO tlyr_period VALUES (") + values + ")").c_str());
        std::optional<RunError> error;
        EXPECT_EQ(errorNumberOf([&] { TotallingPeriod::read(folder.path()); }, &error), 13);
        EXPECT_TRUE(error && error->description().contains(QStringLiteral("totalling period")))
            << values;
        show<frmTLYRPeriod>([&](QWidget& window) {
            EXPECT_FALSE(child<QCheckBox>(window, u"SSCheck1").isChecked());
            for (const QString& name : {from, to}) {
                EXPECT_TRUE(box(window, name).text().isEmpty());
                box(window, name).setText(QStringLiteral("1/5/2026"));
            }
            clickButton(window, save);
        });
        EXPECT_EQ(stored(), QStringList(QStringLiteral("1/5/2026|1/5/2026")));
    }
}

} // namespace
