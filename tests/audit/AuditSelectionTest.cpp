#include "audit/AuditSelection.h"
#include "audit/AuditEntries.h"
#include "tests/audit/AuditFolder.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

TEST(AuditSelection, GivesItsClauseBlankForBlank) {
    AuditSelection s;
    s.users = {QStringLiteral("Ann"), QStringLiteral("Bob")};
    const QString users = QStringLiteral("([User] in ('Ann', 'Bob')) and ");
    EXPECT_EQ(s.clause(),
              users + QStringLiteral(" ([Action] = 0 or [Action] = 1  or [Action] = 2)"));
    s.kind = AuditSelection::Kind::Accepted;
    EXPECT_EQ(s.clause(), users + QStringLiteral(" ([Action] = 0  or [Action] = 2)"));
    s.kind = AuditSelection::Kind::Declined;
    s.systemDate = {QStringLiteral("1/2/2020"), QStringLiteral("01/05/20")};
    s.canvassDate = {QStringLiteral("2/1/2020"), QStringLiteral("2/29/2020")};
    const QString dates = QStringLiteral(" and (DateValue([now]) between #1/2/2020# and "
                                         "#01/05/20#) and ([date] between #2/1/2020# and "
                                         "#2/29/2020#)");
    EXPECT_EQ(s.clause(), users + QStringLiteral(" ([Action] = 1 or [Action] = 2)") + dates);
    s.breakOut = s.accepted15 = s.accepted20 = s.declined15 = s.declined20 = true;
    EXPECT_EQ(s.clause(),
              users +
                  QStringLiteral("(([action] = 0 and [tHistField] = 'tlyrAccepted') or ([action] = "
                                 "0 and [tHistField] = 'tlyrAccepted2') or ([action] = 1 and "
                                 "[tHistField] = 'tlyrDeclined') or ([action] = 1 and "
                                 "[tHistField] = 'tlyrDeclined2'))") +
                  dates);
    s.accepted15 = s.declined15 = s.declined20 = false;
    EXPECT_TRUE(s.clause().startsWith(
        users + QStringLiteral("(([action] = 0 and [tHistField] = 'tlyrAccepted2')) and")));
}

class AuditEntriesTest : public testing::Test {
protected:
    AuditEntriesTest() {
        folder.addHost(2);
        folder.addAnswer(QStringLiteral("Bob"), QStringLiteral("E2"), 1, 1500, declinedColumn, 4);
        folder.addAnswer(QStringLiteral("Ann"), QStringLiteral("E1"), 0, 150, accepted2Column, 3);
        folder.addAnswer(QStringLiteral("Ann"), QStringLiteral("E1"), 2, 30, {}, 2);
        folder.addAnswer(QStringLiteral("Ann"), QStringLiteral("gone"), 0, 30, {}, 1);
        selection.users = AuditEntries::users(folder.path());
    }
    QStringList shown() const {
        QStringList lines;
        AuditEntries::read(
            folder.path(), QStringLiteral("<> NULL"), selection.clause(), selection.breakOut,
            [&](const AuditEntries::Line& line) { lines.append(line.join(QLatin1Char('|'))); });
        return lines;
    }

    AuditFolder folder;
    AuditSelection selection;
};

TEST_F(AuditEntriesTest, ListsByRecordingTimeWithoutUnknownEmployees) {
    EXPECT_EQ(selection.users, QStringList({QStringLiteral("Ann"), QStringLiteral("Bob")}));
    EXPECT_EQ(shown(), QStringList({QStringLiteral("01/02/2020 12:00 pm|E1|Name "
                                                   "1|Ann|02/03/2020|Deleted|00:30"),
                                    QStringLiteral("01/03/2020 12:00 pm|E1|Name "
                                                   "1|Ann|02/03/2020|Accepted|02:30"),
                                    QStringLiteral("01/04/2020 12:00 pm|E2|Name "
                                                   "2|Bob|02/03/2020|Declined|01:00")}));
}

TEST_F(AuditEntriesTest, DeletedEntriesComeWithPlainChoicesOnly) {
    selection.kind = AuditSelection::Kind::Declined;
    EXPECT_EQ(shown().size(), 2) << "the declined and the deleted one";
    selection.breakOut = selection.accepted20 = selection.declined15 = true;
    EXPECT_EQ(shown().size(), 2);
    EXPECT_TRUE(shown()[0].contains(QStringLiteral("Accepted 2.0")));
    EXPECT_TRUE(shown()[1].contains(QStringLiteral("Declined 1.5")));
}

TEST_F(AuditEntriesTest, TheSystemDateIgnoresTheTimeOfDay) {
    selection.systemDate = {QStringLiteral("1/4/2020"), QStringLiteral("1/3/2020")};
    EXPECT_EQ(shown().size(), 2) << "both ends count, whichever comes first";
    selection.canvassDate = {QStringLiteral("2/4/2020"), QStringLiteral("2/9/2020")};
    EXPECT_TRUE(shown().isEmpty());
}

} // namespace
