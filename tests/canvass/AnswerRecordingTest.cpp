#include "canvass/AnswerRecording.h"
#include "canvass/CanvassTotals.h"
#include "canvass/DerivedColumns.h"
#include "common/DateParser.h"
#include "tests/support/DataFolder.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FaultyFiles.h"
#include "tests/support/Printing.h"

#include <QFile>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace tallyroom;

namespace {

class AnswerRecordingTest : public testing::Test {
protected:
    AnswerRecordingTest() {
        folder.addHost(3);
        folder.associateAll();
        state.DataPath = folder.path();
        state.HostOptionsDb = folder.open(hostFile);
        rebuild();
        request.accept = true;
        request.amount = QStringLiteral("1:30");
        request.canvassDate = QStringLiteral("02/03/2020");
        request.department = QStringLiteral("Dept");
        request.user = QStringLiteral("Ann");
        request.employees = {QStringLiteral("E2")};
    }

    // The board without the answers so far, as for a period that has none of them.
    void rebuild() {
        const auto period = std::exchange(state.period, TotallingPeriod{Date{1}, Date{2}});
        EXPECT_TRUE(CanvassTotals::build(state, host.context(folder.path()).BucketForm, false,
                                         [](const RunError&) { return ErrorAnswer::Abort; }));
        state.period = period;
    }

    void record() {
        result = AnswerRecording::record(state, request);
        if (result.failure)
            throw RunError(*result.failure);
    }

    QStringList history() const {
        return folder.rows(
            hostFile, u"Select [thist_emp], [rule], [thist_date], [shift_date], "
                      u"[thist_record_type], [thist_shift], [thist_dept], [thist_start_time], "
                      u"[thist_stop_time], [thist_attend_code], [tlyrAccepted], [tlyrAccepted2], "
                      u"[tlyrDeclined], [tlyrDeclined2], [Notes] from [TimeHistory];");
    }
    QStringList audit() const {
        return folder.rows(
            addInFile,
            u"Select [User], [Emp_Code], [Date], [Action], [OT], [tHistField] from [TLYR_Audit];");
    }
    QString board(const QString& emp) const {
        return folder
            .rows(mainFile, QStringLiteral("Select [xT15Accepted], [xT20Accepted], "
                                           "[xT15Declined], [xT20Declined], [TotalOT1] from "
                                           "[tlyrTemp] where [emp_code] = '%1';")
                                .arg(emp))
            .value(0);
    }

    DataFolder folder;
    FakeHost host;
    CanvassState state;
    AnswerRequest request;
    AnswerRecording::Result result;
};

TEST_F(AnswerRecordingTest, WritesTransactionAuditAndBoard) {
    record();
    EXPECT_EQ(history(),
              QStringList(QStringLiteral("E2|7|2/3/2020|2/3/2020|AR|S1|Dept|1:30:00 AM|12:00:00 "
                                         "AM|OTA|90|Null|Null|Null|")));
    EXPECT_EQ(audit(), QStringList(QStringLiteral("Ann|E2|2/3/2020|0|90|tlyrAccepted")));
    EXPECT_EQ(board(QStringLiteral("E2")), QStringLiteral("90|Null|Null|Null|90"));
    EXPECT_EQ(board(QStringLiteral("E1")), QStringLiteral("Null|Null|Null|Null|0"));
}

TEST_F(AnswerRecordingTest, EachAnswerGoesToItsColumns) {
    request.doubleAmount = QStringLiteral("0.5");
    const struct {
        bool accept;
        bool breakOut;
        QStringList lines;
    } cases[] = {
        {true, false, {QStringLiteral("0|90|tlyrAccepted")}},
        {false, false, {QStringLiteral("1|90|tlyrDeclined")}},
        {true, true, {QStringLiteral("0|90|tlyrAccepted"), QStringLiteral("0|30|tlyrAccepted2")}},
        {false, true, {QStringLiteral("1|90|tlyrDeclined"), QStringLiteral("1|30|tlyrDeclined2")}},
    };
    for (const auto& c : cases) {
        folder.execute(addInFile, u"Delete * from [TLYR_Audit];");
        request.accept = c.accept;
        request.decline = !c.accept;
        request.breakOut = c.breakOut;
        record();
        EXPECT_EQ(folder.rows(addInFile, u"Select [Action], [OT], [tHistField] from [TLYR_Audit];"),
                  c.lines);
        EXPECT_EQ(result.amounts.size(), c.lines.size());
    }
    EXPECT_EQ(board(QStringLiteral("E2")), QStringLiteral("180|30|180|30|420"));
    EXPECT_EQ(
        folder.rows(hostFile,
                    u"Select [thist_attend_code] from [TimeHistory] where [tlyrDeclined2] = 30;"),
        QStringList(QStringLiteral("OTD2")));
}

TEST_F(AnswerRecordingTest, AnUnusableSecondAmountIsLeftOut) {
    request.breakOut = true;
    for (const char16_t* second : {u"", u"1:75", u"x"}) {
        request.doubleAmount = QString::fromUtf16(second);
        record();
    }
    EXPECT_EQ(audit().filter(QStringLiteral("tlyrAccepted2")).size(), 0);
    EXPECT_EQ(audit().size(), 3);
    request.doubleAmount = QStringLiteral("-1:15");
    EXPECT_EQ(errorNumberOf([&] { record(); }), 13);
    EXPECT_EQ(audit().size(), 4) << "the first line stays";
    EXPECT_EQ(history().size(), 4);
}

TEST_F(AnswerRecordingTest, AWholeDayIsRecordedAsOne) {
    request.amount = QStringLiteral("24:00");
    record();
    EXPECT_EQ(
        folder.rows(hostFile, u"Select [tlyrAccepted], [thist_start_time] from [TimeHistory];"),
        QStringList(QStringLiteral("1440|12/31/1899")));
}

TEST_F(AnswerRecordingTest, AnswersOutsideThePeriodLeaveTheBoardAlone) {
    state.period = TotallingPeriod{*Dates::parse(QStringLiteral("2/3/2020")),
                                   *Dates::parse(QStringLiteral("2/4/2020"))};
    for (const char16_t* day : {u"2/2/2020", u"2/5/2020"}) {
        request.canvassDate = QString::fromUtf16(day);
        record();
    }
    EXPECT_EQ(audit().size(), 2);
    EXPECT_EQ(board(QStringLiteral("E2")), QStringLiteral("Null|Null|Null|Null|0"));
    for (const char16_t* day : {u"2/3/2020", u"2/4/2020"}) {
        request.canvassDate = QString::fromUtf16(day);
        record();
    }
    EXPECT_EQ(board(QStringLiteral("E2")), QStringLiteral("180|Null|Null|Null|180"));
}

TEST_F(AnswerRecordingTest, PassesOverWhoCannotBeRecorded) {
    folder.execute(hostFile, u"Delete * from [Shift];");
    record();
    EXPECT_TRUE(history().isEmpty()) << "shift unknown";
    EXPECT_EQ(result.withoutRule, 1);
    folder.execute(hostFile,
                   u"Insert Into [Shift] ([Shift_Code], [Shift_Rule_Num]) Values ('S1', '7');");
    request.employees = {QStringLiteral("Code"), QStringLiteral("E9")};
    record();
    EXPECT_TRUE(history().isEmpty()) << "not on the board";
    EXPECT_EQ(result.unlisted, 2);
    request.employees = {QStringLiteral("E1")};
    folder.execute(addInFile, u"Update [tlyr_assoc] Set [Accepted] = Null;");
    record();
    EXPECT_TRUE(history().isEmpty()) << "no code for accepted";
    folder.execute(addInFile, u"Delete * from [tlyr_assoc];");
    request.accept = false;
    request.decline = true;
    record();
    EXPECT_TRUE(history().isEmpty()) << "no associations";
    ASSERT_EQ(result.notSetUp.size(), 1U);
    EXPECT_EQ(result.notSetUp.front()->action, AuditAction::Declined);
    EXPECT_TRUE(audit().isEmpty());
}

TEST_F(AnswerRecordingTest, TheEmployeesOwnRuleComesFirst) {
    folder.execute(mainFile,
                   u"Update [tlyrTemp] Set [defaulttimecalc] = '12' Where [emp_code] = 'E2';");
    record();
    EXPECT_EQ(folder.rows(hostFile, u"Select [rule] from [TimeHistory];"),
              QStringList(QStringLiteral("12")));
}

TEST_F(AnswerRecordingTest, AnApostropheBreaksItsStatementAndNothingElse) {
    request.employees = {QStringLiteral("E1"), QStringLiteral("E2")};
    request.comment = QStringLiteral("it's");
    EXPECT_EQ(errorNumberOf([&] { record(); }), 3075);
    EXPECT_TRUE(history().isEmpty());
    EXPECT_TRUE(audit().isEmpty());
    request.comment.clear();
    request.user = QStringLiteral("O'Neill");
    EXPECT_EQ(errorNumberOf([&] { record(); }), 3075);
    EXPECT_TRUE(history().isEmpty()) << "no transaction without its audit row";
    EXPECT_FALSE(AnswerRecording::hindranceOf(request.user).isEmpty());
    EXPECT_TRUE(AnswerRecording::hindranceOf(QStringLiteral("Ann")).isEmpty());
    request.user = QStringLiteral("Ann");
    request.employees = {QStringLiteral("'or'a'='a")};
    EXPECT_EQ(errorNumberOf([&] { record(); }), 3077);
    EXPECT_TRUE(history().isEmpty() && audit().isEmpty());
}

// What hinders a write is told before the first one, whichever file it is.
TEST_F(AnswerRecordingTest, AFileThatCannotBeWrittenLeavesTheOthersAlone) {
    const auto nothingWritten = [&] {
        EXPECT_EQ(result.recorded, 0);
        EXPECT_FALSE(result.anyWritten());
        EXPECT_TRUE(history().isEmpty());
        EXPECT_TRUE(audit().isEmpty());
        EXPECT_EQ(board(QStringLiteral("E2")), QStringLiteral("Null|Null|Null|Null|0"));
    };
    for (const char16_t* file : {addInFile, mainFile, hostFile}) {
        for (const char* use : {"BEGIN IMMEDIATE", "BEGIN; SELECT * FROM sqlite_master"}) {
            SQLite::Database other(folder.file(file).toStdString(), SQLite::OPEN_READWRITE);
            other.exec(use);
            EXPECT_EQ(errorNumberOf([&] { record(); }), 3196)
                << QString::fromUtf16(file).toStdString();
            other.exec("ROLLBACK");
            nothingWritten();
        }
    }
    const QString file = folder.file(mainFile);
    ASSERT_TRUE(QFile::rename(file, file + u'1'));
    EXPECT_EQ(errorNumberOf([&] { record(); }), 3024);
    ASSERT_TRUE(QFile::copy(file + u'1', file));
    EXPECT_EQ(errorNumberOf([&] { record(); }), 3420) << "a board that nobody has looked at";
    nothingWritten();
}

// The add-in's file is looked for at each answer: a new one is written to, a missing one ends the
// command with the answers before it recorded.
TEST_F(AnswerRecordingTest, AnAuditFileThatIsExchangedOrGoesIsNoticed) {
    request.employees = {QStringLiteral("E1"), QStringLiteral("E2"), QStringLiteral("E3")};
    const QString file = folder.file(addInFile);
    ASSERT_TRUE(QFile::copy(file, file + u'2'));
    result = AnswerRecording::record(state, request, [&](int done, int) {
        if (done == 1) {
            EXPECT_TRUE(QFile::rename(file, file + u'1') && QFile::rename(file + u'2', file));
        } else if (done == 2) {
            EXPECT_TRUE(QFile::remove(file));
        }
    });
    ASSERT_TRUE(result.failure);
    EXPECT_EQ(result.failure->number(), 3024);
    EXPECT_EQ(board(QStringLiteral("E2")), QStringLiteral("90|Null|Null|Null|90"));
    EXPECT_EQ(board(QStringLiteral("E3")), QStringLiteral("Null|Null|Null|Null|0"));
    EXPECT_EQ(history().size(), 2);
    EXPECT_EQ(result.recorded, 2);
    QFile::rename(file + u'1', file);
    EXPECT_EQ(audit().size(), 1) << "the second went to the file that was there then";
}

// Each file of a folder keeps what was written to it; of a site, all go back.
TEST_F(AnswerRecordingTest, TheResultOwnsUpToWhatIsWritten) {
    folder.execute(addInFile, u"Drop Table [TLYR_Audit];");
    EXPECT_EQ(errorNumberOf([&] { record(); }), 3192);
    EXPECT_EQ(history().size(), testsOnServer() ? 0 : 1);
    EXPECT_EQ(result.anyWritten(), !history().isEmpty());
}

// What one command leaves is what as many commands of one answer each leave, also when an answer
// fails: those before it count on the board in full.
TEST_F(AnswerRecordingTest, ManyAnswersLeaveWhatOneByOneLeaves) {
    const QString wholeBoard = QStringLiteral("Select * from [tlyrTemp] order by [emp_code];");
    const QStringList before = folder.rows(mainFile, wholeBoard);
    for (const auto& codes : {QStringList{QStringLiteral("E1"), QStringLiteral("E2"),
                                          QStringLiteral("E3"), QStringLiteral("E2")},
                              QStringList{QStringLiteral("E1"), QStringLiteral("E3"),
                                          QStringLiteral("E'2"), QStringLiteral("E2")}}) {
        request.multiply = true;
        const auto board = [&] { return folder.rows(mainFile, wholeBoard); };
        int failed = 0;
        for (const QString& code : codes) {
            request.employees = {code};
            failed = failed != 0 ? failed : errorNumberOf([&] { record(); });
        }
        const QStringList oneByOne = board();
        EXPECT_NE(oneByOne, before);
        rebuild();
        request.employees = codes;
        EXPECT_EQ(errorNumberOf([&] { record(); }), failed);
        EXPECT_EQ(board(), oneByOne);
        rebuild();
    }
}

// A disk that fails at any operation of the command: each answer is there in full or not at all but
// for its last writes, and the next fill's computation finds the raw figures to compute from.
TEST_F(AnswerRecordingTest, ADiskThatFailsLosesNoAnswerThatWasWritten) {
    FaultyFiles disk;
    state.HostOptionsDb = folder.open(hostFile);
    request.employees = {QStringLiteral("E1"), QStringLiteral("E2"), QStringLiteral("E3")};
    const QString derived = QStringLiteral("Select [emp_code], [xT15Accepted], [AcceptedOT] from "
                                           "[tlyrTemp] order by [emp_code];");
    for (int n = 1;; ++n) {
        rebuild();
        const auto auditBefore = audit().size();
        const auto historyBefore = history().size();
        disk.failAt(n);
        const bool failed = errorNumberOf([&] { record(); }) != 0;
        const bool reached = disk.operations() >= n;
        disk.failAt(0);
        const auto audited = audit().size() - auditBefore;
        const auto recorded = history().size() - historyBefore;
        EXPECT_TRUE(recorded == audited || (failed && recorded == audited + 1)) << n;
        EXPECT_TRUE(failed || audited == 3) << n;
        DerivedColumns::compute(state, false);
        int onBoard = 0;
        for (const QString& row : folder.rows(mainFile, derived)) {
            const QStringList cells = row.split(u'|');
            onBoard += cells[1] == QStringLiteral("90") ? 1 : 0;
            EXPECT_EQ(cells[2], cells[1] == QStringLiteral("Null") ? QStringLiteral("0") : cells[1])
                << "derived columns after failure " << n;
        }
        EXPECT_TRUE(onBoard == audited || (failed && onBoard == audited - 1)) << n;
        if (!reached)
            break;
        ASSERT_LT(n, 2000);
    }
}

TEST(AnswerRecordingAmounts, AreTimesFromNothingToADay) {
    for (const char16_t* amount : {u"0:00", u"7.5", u"7:30 PM", u"24:00", u"24.0"})
        EXPECT_TRUE(AnswerRecording::isValidAmount(QString::fromUtf16(amount)));
    for (const char16_t* amount : {u"", u"-1:15", u"24:01", u"25:00 PM", u"7", u"99999:00"})
        EXPECT_FALSE(AnswerRecording::isValidAmount(QString::fromUtf16(amount)))
            << QString::fromUtf16(amount).toStdString();
}

} // namespace
