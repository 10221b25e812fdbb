#include "common/CoreFunctions.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

TEST(CoreFunctions, AnEntryLinesUpAndGivesItsCodeBack) {
    const QString entry =
        CoreFunctions::listEntry(QStringLiteral("OT A"), QStringLiteral("  Accepted "));
    EXPECT_EQ(entry, QStringLiteral("OT A     Accepted"));
    EXPECT_EQ(CoreFunctions::GetCode(entry), QStringLiteral("OT A"));
    const QString full =
        CoreFunctions::listEntry(QStringLiteral("123456789"), QStringLiteral("Nine"));
    EXPECT_EQ(CoreFunctions::GetCode(full), QStringLiteral("123456789"));
    EXPECT_EQ(CoreFunctions::listEntry(QString(), QStringLiteral("None")).indexOf(u'N'), 9);
}

TEST(CoreFunctions, FindsTheFirstEntryThatStartsWithACode) {
    const QStringList entries = {QStringLiteral("A        one"), QStringLiteral("AB       two")};
    EXPECT_EQ(CoreFunctions::FindInBox(entries, QStringLiteral("ab")), 1);
    EXPECT_EQ(CoreFunctions::FindInBox(entries, QStringLiteral("A")), 0);
    EXPECT_EQ(CoreFunctions::FindInBox(entries, QStringLiteral("C")), -1);
    EXPECT_EQ(CoreFunctions::FindInBox({}, QStringLiteral("A")), -1);
}

} // namespace
