#include "common/ui/DateBinding.h"
#include "common/ui/WrongField.h"

#include "common/DateParser.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Printing.h"

#include <QPushButton>
#include <QTest>

using namespace tallyroom;

namespace {

class DateBindingTest : public testing::Test {
protected:
    DateBindingTest() {
        binding = std::make_unique<DateBinding>(
            &window, host.context(QStringLiteral("unused")).DatePickerForm);
        binding->bind(&box, &button);
    }
    QString after(const QString& text, Qt::Key key,
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        box.setText(text);
        QTest::keyClick(&box, key, modifiers);
        return box.text();
    }
    bool isRed() const { return box.styleSheet().contains(QLatin1String("#ff0000")); }

    FakeHost host;
    QWidget window;
    QLineEdit box{&window};
    QPushButton button{&window};
    std::unique_ptr<DateBinding> binding;
};

TEST_F(DateBindingTest, KeysMoveTheDateOverTheEndsOfMonthsAndYears) {
    const struct {
        Qt::Key key;
        const char* from;
        const char* to;
    } cases[] = {
        {Qt::Key_PageUp, "1/31/2020", "02/29/2020"},
        {Qt::Key_PageUp, "1/31/2021", "02/28/2021"},
        {Qt::Key_PageUp, "1/30/1900", "02/28/1900"},
        {Qt::Key_PageUp, "12/15/2020", "01/15/2021"},
        {Qt::Key_PageDown, "3/31/2000", "02/29/2000"},
        {Qt::Key_PageDown, "1/5/2021", "12/05/2020"},
        {Qt::Key_Up, "12/31/2020", "01/01/2021"},
        {Qt::Key_Up, "2/28/2020", "02/29/2020"},
        {Qt::Key_Up, "2/28/2100", "03/01/2100"},
        {Qt::Key_Down, "3/1/2020", "02/29/2020"},
        {Qt::Key_Home, "2/15/2020", "02/01/2020"},
        {Qt::Key_Home, "February 1, 2020", "02/01/2020"},
        {Qt::Key_End, "2/1/2020", "02/29/2020"},
        {Qt::Key_End, "12/5/2021", "12/31/2021"},
        {Qt::Key_Up, "12/31/9999", "12/31/9999"},
        {Qt::Key_PageDown, "1/1/100", "1/1/100"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(after(QString::fromLatin1(c.from), c.key).toStdString(), c.to) << c.from;
    EXPECT_FALSE(isRed());
}

TEST_F(DateBindingTest, OtherKeysAndLockedBoxesKeepTheirMeaning) {
    const QString date = QStringLiteral("02/15/2020");
    EXPECT_EQ(after(date, Qt::Key_Left), date);
    EXPECT_EQ(after(date, Qt::Key_Right), date);
    EXPECT_EQ(after(date, Qt::Key_Home, Qt::ShiftModifier), date);
    EXPECT_EQ(box.selectedText(), date) << "marks text";
    EXPECT_EQ(after(date, Qt::Key_Up, Qt::KeypadModifier), QStringLiteral("02/16/2020"));
    box.setReadOnly(true);
    EXPECT_EQ(after(date, Qt::Key_Up), date);
    EXPECT_EQ(after(QStringLiteral("rubbish"), Qt::Key_Up), QStringLiteral("rubbish"));
    EXPECT_FALSE(isRed()) << "a locked box";
    box.setReadOnly(false);
    EXPECT_EQ(after(QStringLiteral("2/30/2020"), Qt::Key_Home), QStringLiteral("2/30/2020"));
    EXPECT_TRUE(isRed());
    box.setText(QStringLiteral("2/3x"));
    EXPECT_TRUE(isRed()) << "not yet";
    QTest::keyClick(&box, Qt::Key_Backspace);
    EXPECT_FALSE(isRed()) << "corrected";
    after(QStringLiteral("rubbish"), Qt::Key_Up);
    markWrong(&box);
    after(date, Qt::Key_Up);
    EXPECT_TRUE(isRed()) << "a check of the window's own is not taken back";
}

TEST_F(DateBindingTest, ThePickerFillsTheBoxUntilTheBindingEnds) {
    box.setText(QStringLiteral("1/1/2020"));
    button.click();
    EXPECT_EQ(box.text(), QStringLiteral("1/1/2020")) << "nothing was picked";
    EXPECT_EQ(Dates::toText(host.shownDate), QStringLiteral("1/1/2020"));
    host.pickedDate = *Dates::parse(QStringLiteral("3/4/2020"));
    button.click();
    EXPECT_EQ(box.text(), QStringLiteral("03/04/2020"));
    binding.reset();
    host.pickedDate = *Dates::parse(QStringLiteral("5/6/2020"));
    button.click();
    EXPECT_EQ(after(box.text(), Qt::Key_Up), QStringLiteral("03/04/2020"));
}

} // namespace
