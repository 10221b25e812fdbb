#include "canvass/CanvassTotals.h"
#include "canvass/DerivedColumns.h"
#include "canvass/TotalsBuild.h"
#include "tests/canvass/BuildComparison.h"
#include "tests/support/DataFolder.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FaultyFiles.h"
#include "tests/support/Printing.h"

#include <QDir>
#include <QFile>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace tallyroom;

namespace {

const QString totalsOf = QStringLiteral(
    "Select [emp_code], [T15Hours], [T20Hours], [xT15Accepted], [xT20Declined], [WorkedOT], "
    "[AcceptedOT], [DeclinedOT], [TotalOT1], [TotalOT2] from [tlyrTemp] order by [emp_code];");

class CanvassTotalsTest : public testing::Test {
protected:
    void open() {
        context = host.context(folder.path());
        state.DataPath = folder.path();
        state.HostOptionsDb = folder.open(hostFile);
    }

    // Builds; each failing statement gets the next of the answers.
    bool build(std::vector<ErrorAnswer> answers = {}, bool multiply = false) {
        errors.clear();
        const auto answer = [&](const RunError& error) {
            errors.append(QString::number(error.number()));
            expectNoTransaction();
            EXPECT_FALSE(answers.empty()) << error.what();
            if (answers.empty())
                return ErrorAnswer::Abort;
            const ErrorAnswer next = answers.front();
            answers.erase(answers.begin());
            return next;
        };
        return CanvassTotals::build(state, context.BucketForm, multiply, answer);
    }

    void expectNoTransaction() const {
        if (!QFile::exists(folder.file(mainFile)))
            return;
        EXPECT_EQ(errorNumberOf([&] {
                      Transaction(folder.open(mainFile), TransactionKind::Reserve).commit();
                  }),
                  0);
    }

    // Employees on several pages, every third with history.
    void addMany() {
        folder.addHost(60);
        for (int n = 1; n <= 60; n += 3)
            folder.addHistory(QStringLiteral("E%1").arg(n), u"1/1/2020", 60, n);
        open();
    }

    // Builds with the n-th operation of the disk failing, for every step-th n, and checks after
    // each; then the same with a trigger, so that the statements run one by one from the start.
    void sweep(const std::vector<ErrorAnswer>& answers, const std::function<void(int n)>& check) {
        for (const int step : {1, 31}) {
            if (step > 1)
                alter("CREATE TRIGGER seen AFTER UPDATE ON tlyrTemp BEGIN SELECT 1; END");
            bool reached = true;
            for (int n = 1; reached; n += step) {
                disk.failAt(n);
                ASSERT_TRUE(build(answers)) << n;
                reached = disk.operations() >= n;
                disk.failAt(0);
                check(n);
                ASSERT_LT(n, 20000);
            }
        }
    }

    void alter(const char* statement) const {
        SQLite::Database database(folder.file(mainFile).toStdString(), SQLite::OPEN_READWRITE);
        database.exec(statement);
    }

    QStringList board() const { return folder.rows(mainFile, totalsOf); }

    FaultyFiles disk; // first, so that every file is opened through it

    DataFolder folder;
    FakeHost host;
    HostContext context;
    CanvassState state;
    QStringList errors;
};

TEST_F(CanvassTotalsTest, CopiesEmployeesAndTheirDefaultQualification) {
    folder.addHost(2);
    folder.execute(hostFile, u"Update [Employee] Set [Seniority] = Null Where [emp_code] = 'E2';");
    for (const char* row : {"'E1', 'FORK', True", "'E1', 'WELD', False", "'E2', 'WELD', False"})
        folder.execute(hostFile, QStringLiteral("Insert Into [Emp_Qualifications] ([Emp_Code], "
                                                "[Qual_Code], [Default]) Values (%1);")
                                     .arg(QString::fromLatin1(row)));
    open();
    ASSERT_TRUE(build());
    EXPECT_EQ(folder.rows(mainFile, u"Select [emp_code], [emp_name], [emp_dept], [Seniority], "
                                    u"[qual_code], [altphone], [emp_shift] from [tlyrTemp];"),
              QStringList({QStringLiteral("E1|Name 1|D1|99|FORK|Null|S1"),
                           QStringLiteral("E2|Name 2|D2|0|Null|Null|S1")}));
}

TEST_F(CanvassTotalsTest, CountsWholeMinutesAndKeepsNulls) {
    folder.addHost(3);
    for (int third = 0; third < 3; ++third)
        folder.addHistory(u"E1", u"1/1/2020", 480.0 / 3, 0);
    folder.addHistory(u"E2", u"1/1/2020", 45, 20, u"HR");
    folder.addHistory(u"E2", u"1/1/2020", 500, 500, u"XX");
    open();
    ASSERT_TRUE(build());
    EXPECT_EQ(board(), QStringList({QStringLiteral("E1|480|0|0|0|480|0|0|480|480"),
                                    QStringLiteral("E2|45|20|0|0|65|0|0|65|65"),
                                    QStringLiteral("E3|Null|Null|Null|Null|Null|0|0|0|0")}));
    // Half a minute of 45 × 1.5 goes to the even side.
    EXPECT_EQ(folder.rows(
                  mainFile,
                  u"Select [T15Hours_Mult], [T20Hours_Mult] from [tlyrTemp] order by [emp_code];"),
              QStringList(
                  {QStringLiteral("720|0"), QStringLiteral("68|40"), QStringLiteral("Null|Null")}));
}

TEST_F(CanvassTotalsTest, MultiplierWeighsAnswersAndWorkedTime) {
    folder.addHost(1);
    folder.addHistory(u"E1", u"1/1/2020", 100, 30);
    folder.execute(hostFile, u"Insert Into [TimeHistory] ([thist_emp], [shift_date], "
                             u"[thist_record_type], [tlyrAccepted], [tlyrAccepted2], "
                             u"[tlyrDeclined2]) Values ('E1', #1/1/2020#, 'AR', 10, 60, 7);");
    open();
    ASSERT_TRUE(build({}, true));
    EXPECT_EQ(board(), QStringList(QStringLiteral("E1|100|30|10|7|210|135|14|359|224")));
    DerivedColumns::compute(state, false);
    EXPECT_EQ(board(), QStringList(QStringLiteral("E1|100|30|10|7|130|70|7|207|137")));
}

TEST_F(CanvassTotalsTest, StopsAtTotalsWithoutAnEmployee) {
    folder.addHost(3);
    for (const char* emp : {"E1", "E1B", "E2", "E3"})
        folder.addHistory(QString::fromLatin1(emp), u"1/1/2020", 60, 0);
    host.filter = QStringLiteral("in ('E1', 'E1B', 'e2', 'E3')");
    open();
    ASSERT_TRUE(build());
    EXPECT_EQ(board()[0].left(6), QStringLiteral("E1|60|"));
    EXPECT_EQ(board()[1].left(7), QStringLiteral("E2|Null"));
    EXPECT_EQ(board()[2].left(7), QStringLiteral("E3|Null"));
}

TEST_F(CanvassTotalsTest, ComparesCodesExactlyThoughTheDatabaseDoesNot) {
    folder.addHost(2);
    folder.addHistory(u"e1", u"1/1/2020", 60, 0);
    open();
    ASSERT_TRUE(build());
    EXPECT_EQ(board()[0].left(7), QStringLiteral("E1|Null"));
}

TEST(BuildComparison, BothWaysLeaveTheSameBoard) {
    int quick = 0;
    for (unsigned seed = 1; seed <= 30; ++seed) {
        const BuildComparison comparison(seed);
        quick += comparison.isQuick() ? 1 : 0;
        ASSERT_EQ(comparison.difference(), QString()) << seed;
    }
    EXPECT_GE(quick, 15);
}

TEST_F(CanvassTotalsTest, BothEndsOfThePeriodCountWhicheverComesFirst) {
    folder.addHost(1);
    int minutes = 1;
    for (const char16_t* day : {u"1/5/2020", u"1/6/2020", u"1/7/2020", u"1/20/2020", u"1/21/2020"})
        folder.addHistory(u"E1", day, std::exchange(minutes, minutes * 2), 0);
    open();
    const Date first = Dates::fromQDate(QDate(2020, 1, 6));
    const Date last = Dates::fromQDate(QDate(2020, 1, 20));
    for (const auto& period : {TotallingPeriod{first, last}, TotallingPeriod{last, first}}) {
        state.period = period;
        ASSERT_TRUE(build());
        EXPECT_EQ(board().value(0).section(u'|', 1, 1), QStringLiteral("14"));
    }
}

TEST_F(CanvassTotalsTest, AbortRetryAndIgnoreActOnTheFailingStatement) {
    folder.addHost(1);
    folder.addHistory(u"E1", u"1/1/2020", 60, 0);
    open();
    int reads = 0;
    host.onFilterRead = [&] {
        if (++reads <= 2)
            throw RunError::make(ErrorNumber::noSuchMember);
    };
    ASSERT_TRUE(build({ErrorAnswer::Retry}));
    EXPECT_EQ(reads, 4) << "the quick way once, the insert twice, the totals once";
    EXPECT_EQ(board().size(), 1);

    reads = 0;
    ASSERT_TRUE(build({ErrorAnswer::Ignore}));
    EXPECT_TRUE(board().isEmpty()) << "the insert was skipped, the delete was not";

    host.onFilterRead = {};
    folder.execute(mainFile, u"Drop Table [tlyrTemp];");
    EXPECT_FALSE(build({ErrorAnswer::Retry, ErrorAnswer::Abort}));
    EXPECT_EQ(errors, QStringList({QStringLiteral("3078"), QStringLiteral("3078")}));
}

// A table that lacks columns: each statement that names one fails by itself, in its turn.
TEST_F(CanvassTotalsTest, EachUpdateThatFailsIsAskedAboutAlone) {
    folder.addHost(2);
    folder.addHistory(u"E1", u"1/1/2020", 60, 30);
    open();
    alter("ALTER TABLE tlyrTemp DROP COLUMN T15Accepted");
    ASSERT_TRUE(build({ErrorAnswer::Ignore, ErrorAnswer::Retry, ErrorAnswer::Ignore}));
    EXPECT_EQ(errors,
              QStringList({QStringLiteral("3061"), QStringLiteral("3061"), QStringLiteral("3061")}))
        << "the zero, and twice the derived columns";
    EXPECT_EQ(folder.rows(
                  mainFile,
                  u"Select [T15Hours_Mult], [T20Hours_Mult] from [tlyrTemp] order by [emp_code];"),
              QStringList({QStringLiteral("90|60"), QStringLiteral("Null|Null")}));
    EXPECT_FALSE(state.derived);

    alter("ALTER TABLE tlyrTemp ADD COLUMN T15Accepted INTEGER CHECK (T15Accepted < 9)");
    alter("ALTER TABLE tlyrTemp DROP COLUMN T15Hours_Mult");
    alter("ALTER TABLE tlyrTemp ADD COLUMN T15Hours_Mult INTEGER CHECK (T15Hours_Mult < 80)");
    ASSERT_TRUE(build());
    EXPECT_EQ(folder.rows(mainFile, u"Select [T15Hours_Mult], [T20Hours_Mult], [WorkedOT] from "
                                    u"[tlyrTemp] order by [emp_code];"),
              QStringList({QStringLiteral("Null|60|90"), QStringLiteral("Null|Null|Null")}))
        << "a value that the table refuses is passed over alone";
}

TEST_F(CanvassTotalsTest, DerivedColumnsAreComputedAnewAfterEachChange) {
    folder.addHost(2);
    open();
    ASSERT_TRUE(build());
    const auto accepted = [&](bool multiply) {
        DerivedColumns::compute(state, multiply);
        return folder.rows(
            mainFile, u"Select [T15Accepted], [TotalOT1] from [tlyrTemp] order by [emp_code];");
    };
    const auto nobody = QStringLiteral("Null|0");
    EXPECT_EQ(accepted(false), QStringList({nobody, nobody}));
    folder.execute(mainFile, u"Update [tlyrTemp] Set [xT15Accepted] = 10 Where [emp_code] = 'E1';");
    EXPECT_EQ(accepted(false), QStringList({QStringLiteral("10|10"), nobody})) << "by others";
    EXPECT_EQ(accepted(true), QStringList({QStringLiteral("15|15"), nobody})) << "weighed";
    state.rows().database()->execute(
        QStringLiteral("Update [tlyrTemp] Set [xT15Accepted] = 20 Where [emp_code] = 'E2';"));
    EXPECT_EQ(accepted(true), QStringList({QStringLiteral("15|15"), QStringLiteral("30|30")}));
    const auto other = folder.open(mainFile);
    const ChangeMark before = other->changeMark();
    accepted(true);
    ASSERT_TRUE(state.derived);
    EXPECT_EQ(other->changeMark(), before) << "nothing is written when nothing has changed";
}

// What is undone must not pass for done, and a retry must not go on with what is left.
TEST_F(CanvassTotalsTest, ADiskThatFailsOnceCostsNothingAfterARetry) {
    addMany();
    ASSERT_TRUE(build());
    const QString all = QStringLiteral("Select * from [tlyrTemp] order by [emp_code];");
    const QStringList expected = folder.rows(mainFile, all);
    sweep({ErrorAnswer::Retry}, [&](int n) {
        DerivedColumns::compute(state, false);
        EXPECT_EQ(folder.rows(mainFile, all), expected) << n;
    });
}

TEST_F(CanvassTotalsTest, WhatFailsAndIsIgnoredLeavesNoHalfMergedRow) {
    addMany();
    const QString rows = QStringLiteral("Select Count(*) from [tlyrTemp]");
    const QString half =
        rows + QStringLiteral(" where not [T15Hours] = 60 or not [WorkedOT] = 60 + "
                              "[T20Hours];");
    int whole = 0;
    sweep(std::vector(30, ErrorAnswer::Ignore), [&](int n) {
        const int count = folder.rows(mainFile, rows).value(0).toInt();
        EXPECT_TRUE(count == 60 || count == 0) << count << " at " << n;
        EXPECT_EQ(folder.rows(mainFile, half).value(0), QStringLiteral("0")) << n;
        whole += count == 60 ? 1 : 0;
        folder.execute(mainFile, u"Delete * from [tlyrTemp];");
    });
    EXPECT_GT(whole, 10);
}

// As many questions as statements that fail, each after one wait.
TEST_F(CanvassTotalsTest, EachStatementMeetsALockOnce) {
    folder.addHost(1);
    folder.addHistory(u"E1", u"1/1/2020", 60, 0);
    open();
    const auto other = folder.open(mainFile);
    other->begin(TransactionKind::Write);
    disk.failAt(0);
    int asked = 0;
    EXPECT_FALSE(CanvassTotals::build(state, context.BucketForm, false, [&](const RunError& error) {
        EXPECT_EQ(error.number(), 3196);
        EXPECT_EQ(disk.waited(), 2000);
        disk.failAt(0);
        ++asked;
        return asked == 3 ? ErrorAnswer::Abort : ErrorAnswer::Ignore;
    }));
    EXPECT_EQ(asked, 3) << "the delete, the insert and the first update";
}

TEST_F(CanvassTotalsTest, AnIgnoredLockCostsOnlyTheStatementsThatMetIt) {
    folder.addHost(1);
    folder.addHistory(u"E1", u"1/1/2020", 60, 0);
    open();
    const auto other = folder.open(mainFile);
    int reads = 0;
    host.onFilterRead = [&] {
        if (++reads == 2)
            other->begin(TransactionKind::Write);
    };
    ASSERT_TRUE(CanvassTotals::build(state, context.BucketForm, false, [&](const RunError& error) {
        EXPECT_EQ(error.number(), 3196);
        other->commit();
        return ErrorAnswer::Ignore;
    }));
    EXPECT_EQ(board(), QStringList(QStringLiteral("E1|60|0|0|0|60|0|0|60|60")));
    EXPECT_EQ(state.rows().rowCount(), 1);
}

TEST_F(CanvassTotalsTest, AFileThatOthersLockDuringAQuestionFailsTheNextStatement) {
    folder.addHost(1);
    open();
    alter("ALTER TABLE tlyrTemp DROP COLUMN T15Accepted");
    const auto other = folder.open(mainFile);
    ASSERT_TRUE(CanvassTotals::build(state, context.BucketForm, false, [&](const RunError& error) {
        errors.append(QString::number(error.number()));
        const bool locked = other->inTransaction();
        if (locked)
            other->commit();
        else if (errors.size() == 1)
            other->begin(TransactionKind::Write);
        return locked ? ErrorAnswer::Retry : ErrorAnswer::Ignore;
    }));
    EXPECT_EQ(errors, QStringList({QStringLiteral("3061"), QStringLiteral("3196"),
                                   QStringLiteral("3061")}));
}

TEST_F(CanvassTotalsTest, ALockedFileFailsTheDerivedColumnsThatHaveToBeComputed) {
    folder.addHost(1);
    open();
    ASSERT_TRUE(build());
    const auto other = folder.open(mainFile);
    other->begin(TransactionKind::Write);
    EXPECT_EQ(errorNumberOf([&] { DerivedColumns::compute(state, false); }), 0) << "they hold";
    EXPECT_EQ(errorNumberOf([&] { DerivedColumns::compute(state, true); }), 3196);
    other->commit();
    EXPECT_EQ(errorNumberOf([&] { DerivedColumns::compute(state, true); }), 0);
}

// The quick way is no statement of the build: it asks nothing.
TEST_F(CanvassTotalsTest, AMissingMainFileIsAskedAboutOnceAStatement) {
    folder.addHost(1);
    open();
    QFile::remove(folder.file(mainFile));
    EXPECT_TRUE(build(std::vector(30, ErrorAnswer::Ignore)));
    EXPECT_EQ(errors.size(), 22);
}

// A file that is gone still shows its last figures to who has it open.
TEST_F(CanvassTotalsTest, AnExchangedHostFileIsReadAnew) {
    folder.addHost(2);
    open();
    ASSERT_TRUE(build());
    const QString file = folder.file(hostFile);
    ASSERT_TRUE(QFile::copy(file, file + u'2'));
    folder.execute(u"bcx.mdb2", u"Delete * from [Employee] where [emp_code] = 'E2';");
    ASSERT_TRUE(QFile::remove(file) && QFile::rename(file + u'2', file));
    ASSERT_TRUE(build());
    EXPECT_EQ(board().size(), 1);
}

TEST_F(CanvassTotalsTest, AFolderMayHoldAnApostrophe) {
    folder.addHost(1);
    const QString path = folder.file(u"o'neil");
    ASSERT_TRUE(QDir().mkpath(path));
    for (const char16_t* file : {addInFile, mainFile, hostFile})
        ASSERT_TRUE(QFile::copy(folder.file(file), path + u'/' + QString::fromUtf16(file)));
    context = host.context(path);
    state.DataPath = path;
    state.openHostOptions();
    EXPECT_TRUE(TotalsBuild(state, context.BucketForm, false, [](const RunError& error) {
                    ADD_FAILURE() << error.what();
                    return ErrorAnswer::Abort;
                }).run());
    EXPECT_EQ(state.rows().rowCount(), 1);
}

TEST_F(CanvassTotalsTest, AnExistingTableIsDroppedOnceInARun) {
    folder.addHost(1);
    open();
    int failures = 3; // the first is the quick way's
    host.onFilterRead = [&] {
        if (failures-- > 0)
            throw RunError::make(ErrorNumber::tableExists, {QStringLiteral("tlyrTemp")});
    };
    EXPECT_EQ(errorNumberOf([&] { build(); }), 3376) << "there is none in aidb01.mdb to drop";

    QFile::remove(folder.file(addInFile));
    QFile::copy(folder.file(mainFile), folder.file(addInFile));
    failures = 3;
    ASSERT_TRUE(build({ErrorAnswer::Retry}));
    EXPECT_EQ(errors, QStringList(QStringLiteral("3010")));
    EXPECT_EQ(board().size(), 1);
}

} // namespace
