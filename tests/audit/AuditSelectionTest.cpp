#include "audit/AuditSelection.h"
#include "audit/AuditEntries.h"
#include "tests/audit/AuditFolder.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

class AuditEntriesTest : public testing::Test {
protected:
    AuditEntriesTest() {
        folder.addHost(2);
        folder.addAnswer(u"Bob", u"E2", 1, 1500, declinedColumn, 4);
        folder.addAnswer(u"Ann", u"E1", 0, 150, accepted2Column, 3);
        folder.addAnswer(u"Ann", u"E1", 2, 30, {}, 2);
        folder.addAnswer(u"Ann", u"gone", 0, 30, {}, 1);
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

TEST_F(AuditEntriesTest, EachChoiceListsItsEntries) {
    const QString ann = QStringLiteral("Ann");
    folder.addAnswer(ann, u"E1", 0, 10, acceptedColumn, 5);
    folder.addAnswer(ann, u"E1", 1, 20, u"tlyrDeclined2", 6);
    const auto actions = [&] {
        QStringList result;
        for (const QString& line : shown())
            result.append(line.section(u'|', 5, 5));
        return result.join(u' ');
    };
    EXPECT_EQ(actions(), QStringLiteral("Deleted Accepted Declined Accepted Declined"));
    selection.kind = AuditSelection::Kind::Accepted;
    EXPECT_EQ(actions(), QStringLiteral("Deleted Accepted Accepted"));
    selection.kind = AuditSelection::Kind::Declined;
    EXPECT_EQ(actions(), QStringLiteral("Deleted Declined Declined"));
    selection.users = {ann};
    EXPECT_EQ(actions(), QStringLiteral("Deleted Declined"));
    selection.users.append(QStringLiteral("Bob"));
    selection.breakOut = true;
    selection.answers = {&answerKinds[1], &answerKinds[2]};
    EXPECT_EQ(actions(), QStringLiteral("Accepted 2.0 Declined 1.5")) << "none that is deleted";
    selection.answers = {&answerKinds[0], &answerKinds[3]};
    EXPECT_EQ(actions(), QStringLiteral("Accepted 1.5 Declined 2.0"));
}

TEST_F(AuditEntriesTest, NoUserAndNoCodeSelectsOthers) {
    folder.executeNatively(addInFile,
                           "INSERT INTO \"TLYR_Audit\" VALUES ('2020-01-05 12:00:00', 'Eve', "
                           "'''or''a''=''a', '2020-02-03 00:00:00', 0, 30, 'tlyrAccepted')");
    selection.users = {QStringLiteral("Eve")};
    EXPECT_EQ(errorNumberOf([&] { shown(); }), 3077) << "of no employee's code";
    selection.users = {QStringLiteral("x') or True or ('a'='b")};
    EXPECT_EQ(errorNumberOf([&] { shown(); }), 3075);
}

TEST_F(AuditEntriesTest, AnEntryWithBadValuesIsListedWithoutThem) {
    folder.executeNatively(
        addInFile, "UPDATE TLYR_Audit SET Date = 'soon', OT = 9e15, tHistField = x'00' WHERE "
                   "Action = 1; UPDATE TLYR_Audit SET Date = 1e15, OT = 'much' WHERE Action = 0;"
                   "INSERT INTO TLYR_Audit (Now, User, Emp_Code, Action) VALUES ('then', 'Ann', "
                   "'E1', 0), (1, 'Ann', 'E1' || char(0), 0), (2, x'41', 'E2', 0), "
                   "(3, 'A' || char(0), 'E2', 0)");
    EXPECT_EQ(AuditEntries::users(folder.path()), selection.users);
    EXPECT_EQ(shown(), QStringList({QStringLiteral("01/02/2020 12:00 pm|E1|Name "
                                                   "1|Ann|02/03/2020|Deleted|00:30"),
                                    QStringLiteral("01/03/2020 12:00 pm|E1|Name 1|Ann||Accepted|"),
                                    QStringLiteral("01/04/2020 12:00 pm|E2|Name 2|Bob||Declined|"),
                                    QStringLiteral("|E1|Name 1|Ann||Accepted|")}));
}

TEST_F(AuditEntriesTest, TheSystemDateIgnoresTheTimeOfDay) {
    selection.systemDate = {QStringLiteral("1/4/2020"), QStringLiteral("1/3/2020")};
    EXPECT_EQ(shown().size(), 2) << "both ends count, whichever comes first";
    selection.canvassDate = {QStringLiteral("2/4/2020"), QStringLiteral("2/9/2020")};
    EXPECT_TRUE(shown().isEmpty());
}

} // namespace
