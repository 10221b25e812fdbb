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

} // namespace
