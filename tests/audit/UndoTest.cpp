#include "audit/Undo.h"
#include "audit/UndoLine.h"
#include "common/DateParser.h"
#include "common/HostContext.h"
#include "tests/audit/AuditFolder.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

TEST(UndoLine, KeepsItsColumnsAndReadsThemBack) {
    UndoLine line;
    line.code = QStringLiteral("E1");
    line.date = *Dates::parse(QStringLiteral("2/3/2020"));
    line.minutes = 90;
    EXPECT_EQ(line.text(), QStringLiteral("E1          02/03/2020   Accepted   01:30"));
    line.action = AuditAction::Declined;
    line.rate = Rate::Double;
    EXPECT_EQ(line.text(), QStringLiteral("E1          02/03/2020   Declined 2.0   01:30"));
    for (const char16_t* code : {u"E1", u"123456789", u"a b"}) {
        for (const int minutes : {0, 1, 599, 1440, 6000}) {
            for (const AnswerKind& kind : answerKinds) {
                line.code = QString::fromUtf16(code);
                line.minutes = minutes;
                line.action = kind.action;
                line.rate = kind.rate;
                if (minutes == 1)
                    line.rate.reset();
                const UndoLine back = UndoLine::fromText(line.text(), line.rate.has_value());
                EXPECT_EQ(back.text(), line.text());
                EXPECT_EQ(back.criterion(), line.criterion());
            }
        }
    }
    EXPECT_EQ(errorNumberOf([] { UndoLine::fromText(QStringLiteral("E1"), false); }), 13);
}

class UndoTest : public testing::Test {
protected:
    void add(const QString& user, int action, int minutes, const QString& column) const {
        folder.addAnswer(user, u"E1", action, minutes, column);
    }
    QStringList lines(const QString& user, bool breakOut = false) const {
        return Undo::lines(contextOf(user), breakOut).texts;
    }
    void take(const QString& user, int line, bool breakOut = false) const {
        Undo::take(contextOf(user), lines(user, breakOut).value(line), breakOut);
    }
    HostContext contextOf(const QString& user) const {
        HostContext context;
        context.DataPath = folder.path();
        context.CurrentUser = user;
        return context;
    }

    const QString ann = QStringLiteral("Ann");
    const QString bob = QStringLiteral("Bob");
    const QString master = QStringLiteral("Master");
    AuditFolder folder;
};

TEST_F(UndoTest, ListsTheOwnAnswersThatHaveAColumn) {
    add(ann, 0, 60, acceptedColumn);
    add(ann, 1, 30, {});
    add(bob, 1, 45, declinedColumn);
    EXPECT_EQ(lines(ann).size(), 1);
    EXPECT_EQ(lines(QStringLiteral("nobody")).size(), 0);
    EXPECT_EQ(lines(master).size(), 2);
    const QString longName(255, u'n');
    add(longName, 0, 15, acceptedColumn);
    EXPECT_EQ(lines(longName).size(), 1) << "a name that was cut would never be found again";
}

TEST_F(UndoTest, AnEntryWithMissingValuesIsListedLikeTheOthers) {
    add(ann, 0, 60, acceptedColumn);
    folder.execute(addInFile, u"Insert Into [TLYR_Audit] ([User], [Emp_Code], [tHistField]) Values "
                              u"('Ann', 'E2', 'tlyrAccepted');");
    const QStringList shown = lines(ann);
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown.first(), QStringLiteral("E2                       Accepted   "));
    take(ann, 1);
    EXPECT_EQ(folder.audit().size(), 1);
}

TEST_F(UndoTest, ABadEntryHarmsNoOther) {
    folder.executeNatively(
        addInFile, "INSERT INTO TLYR_Audit (User, Emp_Code, Date, Action, OT, tHistField) VALUES "
                   "('Ann', 'E1', '2020-02-03 00:00:00', 0, 60, NULL), "
                   "('Ann', 'E1', '2020-02-03 00:00:00', 0, 1e15, 'tlyrAccepted'), "
                   "('Ann', 'E1', 'soon', 'much', x'00', x'00'), "
                   "('Ann', 'E1' || char(0), '2020-02-03 00:00:00', 0, 60, 'tlyrAccepted'), "
                   "('Ann', x'00', '2020-02-03 00:00:00', 0, 60, 'tlyrAccepted')");
    add(ann, 0, 0, acceptedColumn);
    add(ann, 0, 60, acceptedColumn);
    const QString start = QStringLiteral("E1          02/03/2020   Accepted   ");
    EXPECT_EQ(lines(ann),
              QStringList({start, start + QStringLiteral("00:00"), start + QStringLiteral("01:00"),
                           QStringLiteral("E1                       Accepted   ")}));
    for (const int unreadable : {0, 3})
        EXPECT_EQ(errorNumberOf([&] { take(ann, unreadable); }), 13);
    EXPECT_EQ(folder.history().size(), 2);
    EXPECT_EQ(Undo::lines(contextOf(ann), false).unreadable, 2);
    take(ann, 2);
    EXPECT_EQ(folder.history(), QStringList(QStringLiteral("E1|0|Null|Null")));
}

TEST_F(UndoTest, AUserOfAnyNameSeesNobodyElsesAnswers) {
    add(bob, 0, 60, acceptedColumn);
    const QString hostile = QStringLiteral("x' or 'a'='a");
    EXPECT_EQ(errorNumberOf([&] { lines(hostile); }), 3075);
    const QString line = lines(bob).value(0);
    EXPECT_EQ(errorNumberOf([&] { Undo::take(contextOf(hostile), line, false); }), 3075);
    EXPECT_EQ(errorNumberOf([&] {
                  Undo::take(contextOf(bob), QStringLiteral("'or''='  ") + line.mid(9), false);
              }),
              3077);
    EXPECT_EQ(folder.audit().size(), 1);
}

TEST_F(UndoTest, RemovesOneTransactionAndTheEntry) {
    add(ann, 0, 60, acceptedColumn);
    add(ann, 0, 60, acceptedColumn);
    take(ann, 1);
    EXPECT_EQ(folder.audit().size(), 1);
    EXPECT_EQ(folder.history().size(), 1);
    folder.execute(hostFile, u"Delete * from [TimeHistory];");
    take(ann, 0);
    EXPECT_TRUE(folder.audit().isEmpty()) << "the entry goes without its transaction too";
}

TEST_F(UndoTest, ADeletedEntryReadsAcceptedAndStays) {
    add(ann, 2, 60, acceptedColumn);
    EXPECT_TRUE(lines(ann).value(0).contains(QStringLiteral("Accepted")));
    take(ann, 0);
    EXPECT_EQ(folder.audit().size(), 1);
}

TEST_F(UndoTest, ThePlainViewTakesTheFirstOfEitherRate) {
    add(ann, 0, 60, accepted2Column);
    add(ann, 0, 60, acceptedColumn);
    take(ann, 1);
    EXPECT_EQ(folder.audit(), QStringList(QStringLiteral("Ann|E1|0|60|tlyrAccepted")));
    EXPECT_EQ(folder.history(), QStringList(QStringLiteral("E1|60|Null|Null")));
    add(ann, 0, 60, accepted2Column);
    take(ann, 1, true);
    EXPECT_EQ(folder.audit(), QStringList(QStringLiteral("Ann|E1|0|60|tlyrAccepted")))
        << "the broken-out view names the rate";
}

TEST_F(UndoTest, AColumnThatTheHistoryLacksIsAnErrorBeforeAnythingIsRemoved) {
    folder.execute(addInFile,
                   u"Insert Into [TLYR_Audit] ([User], [Emp_Code], [Date], [Action], [OT], "
                   u"[tHistField]) Values ('Ann', 'E1', #2/3/2020#, 0, 60, 'shoes');");
    EXPECT_EQ(errorNumberOf([&] { take(ann, 0); }), 3061);
    EXPECT_EQ(folder.audit().size(), 1);
}

} // namespace
