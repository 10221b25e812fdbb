#include "board/CellText.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

TEST(CellText, CellsShowBlanksWhereTheyShould) {
    using enum CellKind;
    EXPECT_EQ(cellText(Time, Variant(90), false), QStringLiteral("01:30"));
    EXPECT_EQ(cellText(Time, Variant(0), false), QStringLiteral("00:00"));
    EXPECT_EQ(cellText(Time, Variant(0), true), QString());
    EXPECT_EQ(cellText(Time, Variant::null(), false), QString());
    EXPECT_EQ(cellText(Time, Variant::null(), true), QString());
    EXPECT_EQ(cellText(Number, Variant(0.0), false), QStringLiteral("0"));
    EXPECT_EQ(cellText(Number, Variant(0.0), true), QString());
    EXPECT_EQ(cellText(Number, Variant(12.5), true), QStringLiteral("12.5"));
    EXPECT_EQ(cellText(Day, Variant(Date{2}), false), QStringLiteral("01/01/1900"));
    EXPECT_EQ(cellText(Day, Variant::null(), false), QString());
}

TEST(CellText, PhonesShowAsUsersKnowThem) {
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
