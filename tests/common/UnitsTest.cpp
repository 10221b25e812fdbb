#include "common/Units.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

QString converted(Variant value, const char16_t* to, const char16_t* from) {
    QString toUnit = QString::fromUtf16(to);
    QString fromUnit = QString::fromUtf16(from);
    return ConvertUnits(value, toUnit, fromUnit).textOrEmpty();
}

TEST(Units, ConvertBetweenEveryPair) {
    const struct {
        Variant value;
        const char16_t* to;
        const char16_t* from;
        QString result;
    } cases[] = {
        {Variant(90), u"TIME", u"MINUTES", QStringLiteral("01:30")},
        {Variant(600), u" hh:mm ", u"1", QStringLiteral("10:00")},
        {Variant(0), u"2", u"MINUTES", QStringLiteral("00:00")},
        {Variant(6000), u"TIME", u"MINUTES", QStringLiteral("100:00")},
        {Variant(-75), u"TIME", u"MINUTES", QStringLiteral("-01:15")},
        {Variant(-15), u"TIME", u"MINUTES", QStringLiteral("-00:15")},
        {Variant(59.5), u"TIME", u"MINUTES", QStringLiteral("00:00")},
        {Variant(90), u"DECIMAL", u"MINUTES", QStringLiteral("01.50")},
        {Variant(360), u"PERCENT", u"MINUTES", QStringLiteral("0.25")},
        {Variant(600), u"PERCENT", u"MINUTES", QStringLiteral("0.4166667")},
        {Variant(1.5), u"MINUTES", u"3", QStringLiteral("90")},
        {Variant(0.25), u"TIME", u"4", QStringLiteral("06:00")},
        {Variant(u"7:30"), u"MINUTES", u"TIME", QStringLiteral("450")},
        {Variant(u"7.5"), u"MINUTES", u"TIME", QStringLiteral("450")},
        {Variant(u"7. 5"), u"MINUTES", u"TIME", QStringLiteral("450")},
        {Variant(u"7.5 PM"), u"MINUTES", u"TIME", QStringLiteral("1170")},
        {Variant(u" 7:30 PM"), u"MINUTES", u"TIME", QStringLiteral("1170")},
        {Variant(u"24:00"), u"MINUTES", u"TIME", QStringLiteral("1440")},
        {Variant(u" 24:00 "), u"MINUTES", u"TIME", QStringLiteral("1440")},
        {Variant(u"100:30"), u"MINUTES", u"TIME", QStringLiteral("6030")},
        {Variant(u"- 1:15"), u"MINUTES", u"TIME", QStringLiteral("-75")},
        {Variant(u""), u"MINUTES", u"TIME", QStringLiteral("0")},
        {Variant::null(), u"TIME", u"MINUTES", QString()},
        {Variant(90), u"furlongs", u"MINUTES", QString()},
    };
    for (const auto& c : cases)
        EXPECT_EQ(converted(c.value, c.to, c.from), c.result)
            << c.value.textOrEmpty().toStdString();
    EXPECT_EQ(errorNumberOf([] { converted(Variant(90), u"MINUTES", u"furlongs"); }), 13);
}

TEST(Units, ConversionLeavesItsTracesInTheCallersVariables) {
    Variant value(0.5);
    QString to = QStringLiteral(" minutes ");
    QString from = QStringLiteral("percent");
    ConvertUnits(value, to, from);
    EXPECT_EQ(to, QStringLiteral("MINUTES"));
    EXPECT_EQ(from, QStringLiteral("PERCENT"));
    EXPECT_EQ(value.toDouble(), 720);
}

TEST(Units, IsTimeAcceptsAmountsAndNothingElse) {
    for (const char16_t* text : {u"7:30", u"07:30 PM", u"7:30am", u"-1:15", u"7.5", u" 7:30 ",
                                 u"24:00", u"1234567:59", u"0.25", u"7 :30"})
        EXPECT_TRUE(IsTime(QString::fromUtf16(text))) << QString::fromUtf16(text).toStdString();
    for (const char16_t* text :
         {u"", u"PM", u"-", u"7:60", u"7:5", u":30", u"7.", u".5", u"7:30:00", u"7h30", u"7",
          u"7.123", u"7:30.5", u"12345678:30", u"1 2:30", u"--1:15", u"7,5", u"٧:٣٠"})
        EXPECT_FALSE(IsTime(QString::fromUtf16(text))) << QString::fromUtf16(text).toStdString();
}

TEST(Units, EveryAmountOfADayComesBackFromItsText) {
    for (std::int32_t minutes = 0; minutes <= 1440; ++minutes) {
        const QString text = TimeConversion::toTimeText(minutes);
        EXPECT_EQ(TimeConversion::toMinutes(text), minutes);
        EXPECT_NEAR(TimeConversion::timeAsDate(text).serial * 1440, minutes, 1e-6);
    }
    for (const char16_t* text : {u"-01:15", u"24:01", u"99:00", u"7"})
        EXPECT_EQ(errorNumberOf([&] { TimeConversion::timeAsDate(QString::fromUtf16(text)); }), 13);
}

} // namespace
