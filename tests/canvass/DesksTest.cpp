// Several desks at one site on a server. A desk is a session; two in one program differ in a
// parameter of the address.
#include "audit/DeskNews.h"
#include "canvass/DerivedColumns.h"
#include "canvass/Tallyroom.h"
#include "common/ui/Grid.h"
#include "store/postgres/PostgresSession.h"
#include "tests/canvass/Desk.h"
#include "tests/support/PostgresCluster.h"
#include "tests/support/Printing.h"

#include <QAction>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <utility>

namespace tallyroom {

using namespace Qt::Literals::StringLiterals;

namespace {

class DesksTest : public testing::Test {
protected:
    void SetUp() override {
        if (!testsOnServer())
            GTEST_SKIP() << "a folder has one desk";
        m_site = std::make_unique<DataFolder>();
        m_site->addHost(60);
        m_site->associateAll();
        m_site->addHistory(u"E1", u"1/8/2008", 90, 0);
    }

    QString address(const QString& desk) const {
        return m_site->path() + QStringLiteral("&application_name=") + desk;
    }
    std::shared_ptr<PostgresSession> session(const QString& desk) const {
        return PostgresSession::of(parseServerAddress(address(desk) + u"\\bcx.mdb"_s));
    }
    qint64 roundTrips(const QString& desk) const {
        return session(desk)->connection().roundTrips();
    }
    qsizetype entries() const {
        return m_site->rows(addInFile, u"Select * From TLYR_Audit").size();
    }

    static bool isSoon(const std::function<bool()>& condition) {
        for (const QDeadlineTimer patience(5000); !condition() && !patience.hasExpired();)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        return condition();
    }

    std::unique_ptr<DataFolder> m_site;
};

TEST_F(DesksTest, EachHasABoardOfItsOwn) {
    Desk one(address(u"one"_s), u"in ('E1', 'E2')"_s);
    Desk two(address(u"two"_s), u"in ('E2', 'E3', 'E4')"_s);
    ASSERT_TRUE(one.count());
    const QStringList before = one.counted();
    EXPECT_EQ(before.size(), 2);
    ASSERT_TRUE(two.count());
    EXPECT_EQ(two.counted().size(), 3);
    EXPECT_EQ(one.counted(), before);
}

TEST_F(DesksTest, HearWhatIsRecordedElsewhere) {
    Desk one(address(u"one"_s), u"<> NULL"_s);
    Desk two(address(u"two"_s), u"<> NULL"_s);
    ASSERT_TRUE(one.count() && two.count());
    EXPECT_EQ(one.accept({u"E1"_s, u"E2"_s}).recorded, 2);
    EXPECT_TRUE(isSoon([&] { return two.news.size() >= 2; }));
    EXPECT_EQ(two.news, QStringList(2, DeskNews::answerRecorded));
    EXPECT_EQ(one.news, QStringList()) << "who recorded it knows";
}

// The session outlives the board that it told.
TEST_F(DesksTest, HearNothingOfTheTimeBeforeTheyOpened) {
    Desk two(address(u"two"_s), u"<> NULL"_s);
    ASSERT_TRUE(two.count());
    const auto session = Workspace::openAddIn(address(u"one"_s));
    { const Desk closed(address(u"one"_s), u"<> NULL"_s); }
    EXPECT_EQ(two.accept({u"E1"_s, u"E2"_s}).recorded, 2);
    Desk one(address(u"one"_s), u"<> NULL"_s);
    ASSERT_TRUE(one.count());
    EXPECT_EQ(two.accept({u"E3"_s}).recorded, 1);
    EXPECT_TRUE(isSoon([&] { return !one.news.isEmpty(); }));
    EXPECT_EQ(one.news, QStringList(DeskNews::answerRecorded));
}

TEST_F(DesksTest, AreToldWhichFileIsInUse) {
    const auto lock = u"Update [TLYR_Audit] Set [OT] = 1;"_s;
    m_site->execute(addInFile, u"Insert Into [TLYR_Audit] ([Emp_Code]) Values ('E1');");
    Desk desk(address(u"one"_s), u"<> NULL"_s);
    const auto ours = Workspace::openAddIn(address(u"one"_s), WhenInUse::Fail);
    const auto theirs = Workspace::openAddIn(address(u"two"_s));
    const Transaction locked(theirs, TransactionKind::Write);
    theirs->execute(lock);
    std::optional<RunError> error;
    EXPECT_EQ(errorNumberOf([&] { ours->execute(lock); }, &error), 3196);
    EXPECT_TRUE(error->description().contains(u"aidb01.mdb"_s)) << error->what();
}

// An answer is there whole or not at all, whatever dies in its middle.
TEST_F(DesksTest, AnAnswerThatTheServerDidNotLiveToKeepIsNotThere) {
    Desk desk(address(u"one"_s), u"<> NULL"_s);
    ASSERT_TRUE(desk.count());
    EXPECT_EQ(desk.accept({u"E1"_s}).recorded, 1);
    Transaction begun(desk.state.HostOptionsDb, TransactionKind::Write);
    desk.state.HostOptionsDb->execute(u"Delete From [TimeHistory];"_s);
    PostgresCluster::shared().kill();
    PostgresCluster::shared().start();
    EXPECT_TRUE(isSoon([&] { return desk.isDeaf; }));
    EXPECT_EQ(errorNumberOf([&] { begun.commit(); }), 3043);
    const AnswerRecording::Result cut = desk.accept({u"E2"_s});
    ASSERT_TRUE(cut.failure);
    EXPECT_EQ(cut.failure->number(), ErrorNumber::connectionLost);
    EXPECT_FALSE(cut.anyWritten());
    EXPECT_TRUE(desk.state.rows().database()->isLost());
    ASSERT_TRUE(desk.count());
    EXPECT_FALSE(desk.state.rows().database()->isLost());
    EXPECT_EQ(desk.accept({u"E2"_s}).recorded, 1);
    EXPECT_EQ(entries(), 2);
}

// Each costs what the way to the server and back takes, however many employees there are.
TEST_F(DesksTest, AskTheServerSeldom) {
    FakeHost host;
    const HostContext context = host.context(address(u"one"_s));
    Tallyroom board(context);
    const auto press = [&](const char16_t* entry) {
        board.findChild<QAction*>(QString::fromUtf16(entry))->trigger();
    };
    const auto accept = [&](int first, int last) {
        const Grid& grid = *board.findChild<Grid*>(u"Grid"_s);
        grid.selectionModel()->select({grid.model()->index(first, 0), grid.model()->index(last, 0)},
                                      QItemSelectionModel::ClearAndSelect |
                                          QItemSelectionModel::Rows);
        press(u"mnuAccept");
    };
    const struct {
        const char* what;
        std::function<void()> action;
        qint64 most;
    } jobs[] = {{"opening", [] {}, 25},
                {"Refresh", [&] { press(u"mnuRefresh"); }, 8},
                {"one answer", [&] { accept(0, 0); }, 10},
                {"50 answers", [&] { accept(1, 50); }, 50 * 5 + 5}};
    QTimer::singleShot(0, &board, [&] {
        board.findChild<QLineEdit*>(u"Text1"_s)->setText(u"2:00"_s);
        qint64 before = 0;
        for (const auto& job : jobs) {
            job.action();
            const qint64 asked = std::exchange(before, roundTrips(u"one"_s));
            EXPECT_LE(before - asked, job.most) << job.what;
        }
        board.findChild<QPushButton*>(u"Command1"_s)->click();
    });
    board.showModally();
    EXPECT_EQ(entries(), 51);
}

// Or each fill of the grid would compute all derived columns again.
TEST_F(DesksTest, KnowThatReadingChangesNothing) {
    Desk desk(address(u"one"_s), u"<> NULL"_s);
    ASSERT_TRUE(desk.count());
    const auto board = desk.state.rows().database();
    {
        const Transaction oneState(board, TransactionKind::Read);
        EXPECT_EQ(desk.counted().size(), 60);
    }
    EXPECT_TRUE(DerivedColumns::areCurrent(desk.state, true));
    {
        const Transaction undone(board, TransactionKind::Write);
        board->execute(u"Update [tlyrTemp] Set [T15Hours] = 1"_s);
        DerivedColumns::noteCurrent(desk.state, board, true);
    }
    EXPECT_FALSE(DerivedColumns::areCurrent(desk.state, true));
}

// The server does not tidy up a session's own tables.
TEST_F(DesksTest, CountTheirBoardsInTheSameRoom) {
    Desk desk(address(u"one"_s), u"<> NULL"_s);
    const auto room = [&] {
        EXPECT_TRUE(desk.count());
        return session(u"one"_s)
            ->read(u"SELECT pg_total_relation_size('pg_temp.\"tlyrTemp\"')"_s)
            .text(0, 0)
            .toInt();
    };
    const int first = room();
    for (int count = 0; count < 20; ++count)
        room();
    EXPECT_EQ(room(), first);
}

} // namespace

} // namespace tallyroom
