#include "common/Format.h"
#include "common/Objects.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

TEST(Variant, ConvertsByTheOldRunTimesRules) {
    EXPECT_EQ(Variant(true).toText(), QStringLiteral("True"));
    EXPECT_EQ(Variant(true).toLong(), -1);
    EXPECT_EQ(Variant(0.1).toText(), QStringLiteral("0.1"));
    EXPECT_EQ(Variant(1e20).toText(), QStringLiteral("1E+20"));
    EXPECT_EQ(Variant(-0.0).toText(), QStringLiteral("0"));
    EXPECT_EQ(Variant().toText(), QString());
    EXPECT_TRUE(Variant(u"tRUE").toBoolean());
    EXPECT_FALSE(Variant(u"0").toBoolean());
    EXPECT_EQ(Variant(u"5").toDate().serial, 5);
    EXPECT_EQ(Variant::null().textOrEmpty(), QString());
    const struct {
        double value;
        std::int32_t rounded;
    } halves[] = {{4.5, 4}, {5.5, 6}, {-4.5, -4}, {479.99999999, 480}, {-0.4, 0}};
    for (const auto& half : halves)
        EXPECT_EQ(Variant(half.value).toLong(), half.rounded);
}

TEST(Variant, RefusesWhatDoesNotConvert) {
    EXPECT_EQ(errorNumberOf([] { Variant::null().toText(); }), 94);
    EXPECT_EQ(errorNumberOf([] { Variant::null().toLong(); }), 94);
    EXPECT_EQ(errorNumberOf([] { Variant(u"").toLong(); }), 13);
    EXPECT_EQ(errorNumberOf([] { Variant(u"nan").toDouble(); }), 13);
    EXPECT_EQ(errorNumberOf([] { Variant(u"").toBoolean(); }), 13);
    EXPECT_EQ(errorNumberOf([] { Variant(u"no date").toDate(); }), 13);
    EXPECT_EQ(errorNumberOf([] { Variant(3e9).toLong(); }), 6);
    EXPECT_EQ(errorNumberOf([] { Variant().toObject(); }), 424);
    EXPECT_EQ(errorNumberOf([] { Variant(u"x").toArray(); }), 13);
}

TEST(Variant, ComparesValuesExactly) {
    EXPECT_TRUE(Variant(u"A1").sameValue(Variant(u"A1")));
    EXPECT_FALSE(Variant(u"A1").sameValue(Variant(u"a1")));
    EXPECT_FALSE(Variant(u"A1").sameValue(Variant(u"A1 ")));
    EXPECT_FALSE(Variant::null().sameValue(Variant::null()));
    EXPECT_FALSE(Variant(u"1").sameValue(Variant(1)));
}

TEST(Variant, FormatsTextsAndNumbers) {
    const struct {
        Variant value;
        const char16_t* picture;
        QString text;
    } cases[] = {
        {Variant(u"ab"), u"!@@@@@@@@@", QStringLiteral("ab       ")},
        {Variant(u"0123456789"), u"!@@@@@@@@@", QStringLiteral("123456789")},
        {Variant(1), u"00", QStringLiteral("01")},
        {Variant(-2), u"00", QStringLiteral("-02")},
        {Variant(-0.4), u"00", QStringLiteral("00")},
        {Variant(0.5), u"00", QStringLiteral("01")},
        {Variant(1.5), u"###00.00", QStringLiteral("01.50")},
        {Variant(12345.678), u"###00.00", QStringLiteral("12345.68")},
        {Variant(150.0 / 1440), u"HH:MM", QStringLiteral("02:30")},
        {Variant(1500.0 / 1440), u"HH:MM", QStringLiteral("01:00")},
        {Variant(u"2.5"), u"HH:MM", QStringLiteral("02:05")},
        {Variant(u"2.523"), u"HH:MM", QStringLiteral("12:33")},
        {Variant(u"100:30"), u"HH:MM", QStringLiteral("100:30")},
        {Variant(u"foo"), u"HH:MM", QStringLiteral("foo")},
        {Variant::null(), u"HH:MM", QString()},
        {Variant(u""), u"00", QString()},
    };
    for (const auto& c : cases)
        EXPECT_EQ(formatValue(c.value, QString::fromUtf16(c.picture)), c.text);
}

} // namespace
