#include "audit/AnswersOfDay.h"
#include "audit/AuditDeletion.h"
#include "audit/Contacts.h"
#include "audit/Undo.h"
#include "canvass/AnswerNews.h"
#include "common/DateParser.h"
#include "tests/canvass/Desk.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

class StandingTest : public testing::Test {
protected:
    StandingTest() {
        folder.addHost(3);
        folder.associateAll();
        desk.emplace(folder.path(), QStringLiteral("<> NULL"));
        EXPECT_TRUE(desk->count());
    }

    QStringList standing(const QString& columns) const {
        return folder.rows(
            addInFile, QStringLiteral("Select %1 from [TLYR_Standing] order by [Emp_Code], [Now];")
                           .arg(columns));
    }
    QStringList audit() const {
        return folder.rows(addInFile, QStringLiteral("Select [%1] from [TLYR_Audit] order by "
                                                     "[Emp_Code], [Now];")
                                          .arg(key.join(QStringLiteral("], ["))));
    }
    void undo(int line) const {
        Undo::take(desk->context, Undo::lines(desk->context, false).texts.value(line), false);
    }

    const QStringList key = Standing::keyColumns();
    DataFolder folder;
    std::optional<Desk> desk;
};

TEST_F(StandingTest, IsKeptWithEachAnswerAndGoesWithIt) {
    folder.addHistory(u"E3", u"1/1/2008", 60, 0);
    ASSERT_TRUE(desk->count());
    const AnswerRecording::Result result =
        desk->accept({QStringLiteral("E2"), QStringLiteral("E3")});
    EXPECT_EQ(result.recorded, 2);
    EXPECT_FALSE(result.standing);
    EXPECT_EQ(standing(QStringLiteral("[Emp_Code], [Place], [Listed], [Total]")),
              QStringList({QStringLiteral("Null|Null|3|Null"), QStringLiteral("E2|2|3|0"),
                           QStringLiteral("E3|3|3|90")}));
    EXPECT_EQ(standing(u'[' + key.join(QStringLiteral("], [")) + u']').mid(1), audit());
    const auto snapshot = Standing::fromText(standing(QStringLiteral("[Details]")).value(0));
    ASSERT_TRUE(snapshot);
    EXPECT_EQ(snapshot->rows.size(), 3U);
    EXPECT_EQ(snapshot->rows[2].code, QStringLiteral("E3"));
    undo(0);
    EXPECT_EQ(standing(QStringLiteral("[Emp_Code]")),
              QStringList({QStringLiteral("Null"), QStringLiteral("E3")}));
    undo(0);
    EXPECT_EQ(standing(QStringLiteral("[Emp_Code]")), QStringList());
}

TEST_F(StandingTest, OfADeletedAnswerIsMarked) {
    EXPECT_EQ(desk->accept({QStringLiteral("E1")}).recorded, 1);
    deleteAuditLine(folder.path(), {QStringLiteral("01/09/2008"), QStringLiteral("E1"), QString(),
                                    QStringLiteral("jo"), QStringLiteral("01/09/2008"),
                                    QStringLiteral("Accepted"), QStringLiteral("02:00")});
    EXPECT_EQ(standing(QStringLiteral("[Emp_Code], [Action]")),
              QStringList({QStringLiteral("Null|Null"), QStringLiteral("E1|2")}));
    EXPECT_EQ(standing(u'[' + key.join(QStringLiteral("], [")) + u']').mid(1), audit());
}

TEST_F(StandingTest, IsMissedByNothingWhereThereIsNoTable) {
    for (const char16_t* table : {u"TLYR_Standing", u"TLYR_Contact"})
        folder.execute(addInFile, QStringLiteral("Drop Table [%1];").arg(table));
    const AnswerRecording::Result result =
        desk->accept({QStringLiteral("E1"), QStringLiteral("E2")});
    EXPECT_EQ(result.recorded, 2);
    EXPECT_EQ(audit().size(), 2);
    ASSERT_TRUE(result.standing);
    EXPECT_TRUE(AnswerNews::text({}, result, {}, Date{}).contains(QStringLiteral("--upgrade")));
    AnswersOfDay asked;
    EXPECT_TRUE(asked.read(folder.path(), *Dates::parse(QStringLiteral("1/9/2008"))));
    EXPECT_TRUE(asked.hasAnswered(QStringLiteral("E2")));
    undo(0);
    EXPECT_EQ(audit().size(), 1);
}

TEST(Standing, IsReadBackAsItWasKept) {
    Standing::Snapshot board{QStringLiteral("O'Neill's \"own\""),
                             QStringLiteral("Index0=x|x_State=True"),
                             std::pair(Date{1}, Date{2.5}),
                             true,
                             false,
                             true,
                             QString(),
                             7,
                             {{QStringLiteral("O'1"), QStringLiteral("26:15"), true},
                              {QStringLiteral("Ç2"), QString(), false}}};
    const auto back = Standing::fromText(Standing::toText(board));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->ordering, board.ordering);
    EXPECT_EQ(back->period, board.period);
    EXPECT_EQ(back->listed, 7);
    ASSERT_EQ(back->rows.size(), 2U);
    EXPECT_TRUE(back->rows[0].wasAsked);
    EXPECT_EQ(back->rows[1].code, QStringLiteral("Ç2"));
    EXPECT_FALSE(Standing::fromText(QStringLiteral("damaged")));
}

TEST_F(StandingTest, AContactMarksWhoWasCalledWithoutBeingAnAnswer) {
    const Date day = *Dates::parse(QStringLiteral("1/9/2008"));
    Contacts::record(folder.path(), {Date{39455.5}, QStringLiteral("jo"), QStringLiteral("E1"), day,
                                     Contacts::Outcome::LeftMessage, QStringLiteral("it's late")});
    AnswersOfDay asked;
    ASSERT_TRUE(asked.read(folder.path(), day));
    EXPECT_EQ(asked.noteOf(QStringLiteral("E1")),
              QStringLiteral("Left message, 1/8/2008 12:00 by jo: it's late"));
    EXPECT_FALSE(asked.hasAnswered(QStringLiteral("E1")));
}

} // namespace
