#include "common/DateParser.h"
#include "common/Format.h"
#include "common/Variant.h"
#include "tests/support/Printing.h"

#include <cmath>
#include <limits>

using namespace tallyroom;

namespace {

QString isoOf(const char16_t* text) {
    const auto date = Dates::parse(QString::fromUtf16(text));
    return date ? Dates::toIso(*date) : QStringLiteral("no date");
}

TEST(Dates, ReadsTextsAsTheOldRunTimeDid) {
    const QString year = QString::number(QDate::currentDate().year());
    const struct {
        const char16_t* text;
        QString iso;
    } cases[] = {
        {u"1/2/2008", QStringLiteral("2008-01-02 00:00:00")},
        {u" 01/02/08 ", QStringLiteral("2008-01-02 00:00:00")},
        {u"1/5/2008 2:07:09 PM", QStringLiteral("2008-01-05 14:07:09")},
        {u"2:07 PM 1/5/2008", QStringLiteral("2008-01-05 14:07:00")},
        {u"1/2", year + QStringLiteral("-01-02 00:00:00")},
        {u"1 2", year + QStringLiteral("-01-02 00:00:00")},
        {u"Jan 5", year + QStringLiteral("-01-05 00:00:00")},
        {u"5 january", year + QStringLiteral("-01-05 00:00:00")},
        {u"14/1", year + QStringLiteral("-01-14 00:00:00")},
        {u"13-1-1970", QStringLiteral("1970-01-13 00:00:00")},
        {u"2/30", QStringLiteral("1930-02-01 00:00:00")},
        {u"Jan 35", QStringLiteral("1935-01-01 00:00:00")},
        {u"02/29/01", QStringLiteral("2029-02-01 00:00:00")},
        {u"2008-12-31", QStringLiteral("2008-12-31 00:00:00")},
        {u"12/31/29", QStringLiteral("2029-12-31 00:00:00")},
        {u"12/31/30", QStringLiteral("1930-12-31 00:00:00")},
        {u"3:5", QStringLiteral("1899-12-30 03:05:00")},
        {u"7.5", QStringLiteral("1899-12-30 07:05:00")},
        {u"1 am", QStringLiteral("1899-12-30 01:00:00")},
        {u"12:30 AM", QStringLiteral("1899-12-30 00:30:00")},
        {u"13:00 AM", QStringLiteral("1899-12-30 13:00:00")},
        {u"7:60", QStringLiteral("no date")},
        {u"24:00", QStringLiteral("no date")},
        {u"02.01.1970", QStringLiteral("no date")},
        {u"29-Feb-2001", QStringLiteral("no date")},
        {u"13/45/2008", QStringLiteral("no date")},
        {u"True", QStringLiteral("no date")},
        {u"1/2/2008# or #1/2/2008", QStringLiteral("no date")},
        {u"1/2/", QStringLiteral("no date")},
        {u"1//2", QStringLiteral("no date")},
        {u"-1/2", QStringLiteral("no date")},
        {u"99999999999:30", QStringLiteral("no date")},
        {u"5", QStringLiteral("no date")},
        {u"99999999999/1/1", QStringLiteral("no date")},
        {u"", QStringLiteral("no date")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(isoOf(c.text), c.iso) << QString::fromUtf16(c.text).toStdString();
}

TEST(Dates, WritesTheDefaultTextAndReadsItBack) {
    const struct {
        double serial;
        QString text;
    } cases[] = {
        {0.0, QStringLiteral("12:00:00 AM")},
        {0.5, QStringLiteral("12:00:00 PM")},
        {1.0, QStringLiteral("12/31/1899")},
        {2.0, QStringLiteral("1/1/1900")},
        {39449.0 + 8.0 / 24 + 9.0 / 1440 + 36.0 / 86400, QStringLiteral("1/2/2008 8:09:36 AM")},
        {-1.25, QStringLiteral("12/29/1899 6:00:00 AM")},
        {39448.999999, QStringLiteral("1/2/2008")},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Dates::toText({c.serial}), c.text);
        const auto back = Dates::parse(c.text);
        ASSERT_TRUE(back);
        EXPECT_NEAR(back->serial, c.serial, 1.0 / 86400);
    }
}

TEST(Dates, FormatsWithPictures) {
    const Date date = *Dates::parse(QStringLiteral("1/2/2001 3:04:05 PM"));
    const struct {
        const char16_t* picture;
        QString text;
    } cases[] = {
        {u"mm/dd/yyyy", QStringLiteral("01/02/2001")},
        {u"mm/dd/yyyy hh:mm am/pm", QStringLiteral("01/02/2001 03:04 pm")},
        {u"HH:MM", QStringLiteral("15:04")},
        {u"hh:mm mm", QStringLiteral("15:04 01")},
        {u"dddd mmmm dd, yyyy at hh:nn:ss am/pm",
         QStringLiteral("Tuesday January 02, 2001 at 03:04:05 pm")},
        {u"d-mmm-yy H:N AM/PM", QStringLiteral("2-Jan-01 3:4 PM")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Dates::format(date, QString::fromUtf16(c.picture)), c.text);
}

TEST(Dates, LieInTheYears100To9999) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double serial :
         {-1e308, 1e308, infinity, -infinity, std::nan(""), -657435.0, 2958466.0, 2958465.999999}) {
        const Date date{serial};
        EXPECT_FALSE(Dates::isInRange(date)) << serial;
        EXPECT_EQ(errorNumberOf([date] { Dates::dayOf(date); }), 6) << serial;
        EXPECT_EQ(errorNumberOf([date] { Variant(date).toText(); }), 6) << serial;
        EXPECT_EQ(errorNumberOf([serial] { Variant(serial).toDate(); }), 6) << serial;
        EXPECT_EQ(formatValue(Variant(date), QStringLiteral("mm/dd/yyyy")), numberText(serial));
        EXPECT_EQ(formatValue(Variant(serial), QStringLiteral("hh:mm")), numberText(serial));
    }
    EXPECT_EQ(Dates::toIso({-657434.5}), QStringLiteral("0100-01-01 12:00:00"));
    EXPECT_EQ(Dates::toIso({2958465.99999}), QStringLiteral("9999-12-31 23:59:59"));
    for (const char16_t* text : {u"0099-12-31 00:00:00", u"1/2/2008", u"2008-02-30 00:00:00"})
        EXPECT_FALSE(Dates::fromIso(QString::fromUtf16(text)));
}

} // namespace
