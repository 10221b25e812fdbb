#include "ordering/SettingsText.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

TEST(SettingsText, TheFirstPairWithTheKeysStartAnswers) {
    const QString text = QStringLiteral("Index10=ten|Index1=one|flag|Empty=|a=b=c");
    const struct {
        const char16_t* key;
        QString value;
    } cases[] = {
        {u"Index1", QStringLiteral("ten")}, {u"INDEX10", QStringLiteral("ten")},
        {u"flag", QStringLiteral("flag")},  {u"Empty", QStringLiteral("none")},
        {u"a", QStringLiteral("b=c")},      {u"Index2", QStringLiteral("none")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GetTagValue(text, QString::fromUtf16(c.key), QStringLiteral("none")), c.value);
    EXPECT_EQ(GetTagValue(QString(), QStringLiteral("a")), QString());
}

TEST(SettingsText, SettingReplacesOrAppends) {
    QString text = SetTagValue(QString(), QStringLiteral("a"), QStringLiteral("1"));
    text = SetTagValue(text, QStringLiteral("b"), QStringLiteral("2"));
    text = SetTagValue(text, QStringLiteral("A"), QStringLiteral("3"));
    EXPECT_EQ(text, QStringLiteral("A=3|b=2"));
}

} // namespace
