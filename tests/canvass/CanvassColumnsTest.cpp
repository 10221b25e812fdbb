#include "canvass/CanvassColumns.h"
#include "tests/support/Printing.h"

#include <QStringList>

using namespace tallyroom;

namespace {

QStringList headers(const CanvassOptions& options) {
    QStringList texts;
    for (const CanvassColumn& column : canvassColumns(options))
        texts.append(column.header);
    return texts;
}

TEST(CanvassColumns, OptionsChooseColumnsAndFields) {
    CanvassOptions o;
    EXPECT_EQ(headers(o).join(u'|'),
              QStringLiteral("Code|Name|Phone|OT Worked|OT Accepted|OT Declined|Total"));
    o.department = o.position = o.seniorityDate = o.seniorityNumber = o.breakOut =
        o.alternatePhone = o.cellPhone = o.pager = true;
    EXPECT_EQ(headers(o).join(u'|'),
              QStringLiteral("Code|Name|Dept|Position|Phone|Alt. Phone|Cell Phone|Pager|Sen. Date|"
                             "Sen. #|1.5|2.0|1.5 Accepted|2.0 Accepted|1.5 Declined|2.0 Declined|"
                             "Total"));
    EXPECT_EQ(canvassColumns(o)[10].field, QStringLiteral("t15hours"));
    o.multiply = true;
    o.totalWithAccepted = false;
    EXPECT_EQ(canvassColumns(o)[10].field, QStringLiteral("t15hours_mult"));
    EXPECT_EQ(canvassColumns(o)[13].field, QStringLiteral("t20accepted"));
    EXPECT_EQ(canvassColumns(o).back().field, QStringLiteral("totalot2"));
    o.breakOut = false;
    EXPECT_EQ(canvassColumns(o)[10].field, QStringLiteral("workedot"));
}

TEST(CanvassColumns, CellsShowBlanksWhereTheyShould) {
    const CanvassColumn time{QString(), QString(), CellKind::Time};
    const CanvassColumn number{QString(), QString(), CellKind::Number};
    const CanvassColumn day{QString(), QString(), CellKind::Day};
    EXPECT_EQ(cellText(time, Variant(90), false), QStringLiteral("01:30"));
    EXPECT_EQ(cellText(time, Variant(0), false), QStringLiteral("00:00"));
    EXPECT_EQ(cellText(time, Variant(0), true), QString());
    EXPECT_EQ(cellText(time, Variant::null(), false), QString());
    EXPECT_EQ(cellText(time, Variant::null(), true), QString());
    EXPECT_EQ(cellText(number, Variant(0.0), false), QStringLiteral("0"));
    EXPECT_EQ(cellText(number, Variant(0.0), true), QString());
    EXPECT_EQ(cellText(number, Variant(12.5), true), QStringLiteral("12.5"));
    EXPECT_EQ(cellText(day, Variant(Date{2}), false), QStringLiteral("01/01/1900"));
    EXPECT_EQ(cellText(day, Variant::null(), false), QString());
}

TEST(CanvassColumns, PhonesShowAsUsersKnowThem) {
    const struct {
        const char16_t* stored;
        QString shown;
    } cases[] = {
        {u"5551234567", QStringLiteral("(555) 123-4567")},
        {u"5551234", QStringLiteral("555-1234")},
        {u"555-123-4567", QStringLiteral("(555-) 123--4567")},
        {u"555 123 4567", QStringLiteral("(555 ) 123 -4567")},
        {u"555 1234", QStringLiteral("555 -1234")},
        {u"4567", QStringLiteral("4567")},
        {u"   ", QString()},
        {u"", QString()},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FormatPhone(QString::fromUtf16(c.stored)), c.shown);
}

} // namespace
