// Recording answers, against the same writes through the engine's own interface.
#include "bench/BenchData.h"
#include "bench/Jobs.h"
#include "bench/Measure.h"
#include "bench/Plain.h"
#include "canvass/AnswerRecording.h"
#include "canvass/CanvassTotals.h"
#include "common/Units.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <stdexcept>
#include <tuple>

namespace tallyroom::bench {

namespace {

constexpr int historyDays = 30; // what was recorded before does not matter to an answer

// Two copies of the data: what one side records must not help or hinder the other.
class AnswersJob {
public:
    AnswersJob(int board, int answers) {
        const QString kept = keptFolder(board, historyDays);
        copyFolder(kept, product());
        const HostContext host = hostOf(product());
        m_state.DataPath = product();
        m_state.openHostOptions();
        std::ignore =
            CanvassTotals::build(m_state, host.BucketForm, false, [](const RunError& error) {
                throw std::runtime_error(error.description().toStdString());
                return ErrorAnswer::Abort;
            });
        copyFolder(product(), plain());
        m_request.accept = true;
        m_request.amount = QStringLiteral("1:30");
        m_request.canvassDate = Dates::toText(lastDay());
        m_request.department = QStringLiteral("Dept");
        m_request.user = QStringLiteral("Ann");
        m_request.employees = rowsOf(fileIn(plain(), "bcx.mdb"),
                                     "SELECT emp_code FROM Employee ORDER BY emp_code LIMIT " +
                                         std::to_string(answers));
    }

    Comparison compare(int rounds) {
        return inTurns(
            rounds, [this] { return seconds([this] { record(); }); },
            [this] { return seconds([this] { write(); }); }, [this] { requireSameRows(); });
    }

    // The same with and without keeping where everybody stood on the whole board.
    Comparison compareStanding(int rounds) {
        const auto recordWith = [this](std::optional<Standing::Snapshot> board) {
            m_request.board = std::move(board);
            return seconds([this] { record(); });
        };
        return inTurns(
            rounds, [&] { return recordWith(shown()); }, [&] { return recordWith({}); }, [] {});
    }

    // Of what a command keeps, in bytes of the file.
    qint64 bytesOfStanding() {
        const QString file = fileIn(product(), "aidb01.mdb");
        m_request.board = shown();
        const qint64 before = QFileInfo(file).size();
        record();
        return QFileInfo(file).size() - before;
    }

private:
    QString product() const { return m_folders.filePath(QStringLiteral("product")); }
    QString plain() const { return m_folders.filePath(QStringLiteral("plain")); }

    void record() {
        const AnswerRecording::Result result = AnswerRecording::record(m_state, m_request);
        for (const auto* failure : {&result.failure, &result.standing}) {
            if (*failure)
                throw std::runtime_error((*failure)->description().toStdString());
        }
    }

    Standing::Snapshot shown() const {
        Standing::Snapshot board;
        const auto rows = m_state.rows().openRecordset();
        for (; !rows->eof(); rows->moveNext())
            board.rows.push_back({rows->field(QStringLiteral("emp_code")).toText(),
                                  minutesAsTime(rows->field(QStringLiteral("totalot1"))), false});
        board.listed = static_cast<int>(board.rows.size());
        return board;
    }

    void write() {
        Plain host(fileIn(plain(), "bcx.mdb"));
        Plain addIn(fileIn(plain(), "aidb01.mdb"));
        Plain main(fileIn(plain(), "vrlxdb01.mdb"));
        PlainStatement shift(host, "SELECT e.emp_shift, coalesce(e.defaulttimecalc, "
                                   "s.Shift_Rule_Num) FROM Employee e JOIN Shift s ON "
                                   "s.Shift_Code = e.emp_shift WHERE e.emp_code = ?1");
        PlainStatement history(
            host, "INSERT INTO TimeHistory (thist_emp, rule, thist_date, shift_date, "
                  "thist_record_type, thist_shift, thist_dept, thist_start_time, thist_stop_time, "
                  "thist_attend_code, tlyrAccepted, Notes) VALUES (?1, ?2, ?3, ?3, 'AR', ?4, "
                  "'Dept', '1899-12-30 01:30:00', '1899-12-30 00:00:00', ?5, 90, '')");
        PlainStatement audit(addIn, "INSERT INTO TLYR_Audit (Now, User, Emp_Code, Date, Action, "
                                    "OT, tHistField) VALUES (datetime('now', 'localtime'), 'Ann', "
                                    "?1, ?2, 0, 90, 'tlyrAccepted')");
        PlainStatement board(
            main, "UPDATE tlyrTemp SET xT15Accepted = coalesce(xT15Accepted, 0) + 90, "
                  "T15Accepted = coalesce(xT15Accepted, 0) + 90, "
                  "AcceptedOT = AcceptedOT + 90, TotalOT1 = TotalOT1 + 90 WHERE emp_code = ?1");
        const std::string date = Dates::toIso(lastDay()).toStdString();
        const std::string code = absentCode(addIn);
        for (const QString& employee : m_request.employees) {
            const std::string emp = employee.toStdString();
            shift.bind(1, emp);
            if (!shift.next())
                throw std::runtime_error("no shift");
            history.bind(1, emp);
            history.bind(2, shift.text(1).toStdString());
            history.bind(3, date);
            history.bind(4, shift.text(0).toStdString());
            history.bind(5, code);
            shift.reset();
            history.run();
            audit.bind(1, emp);
            audit.bind(2, date);
            audit.run();
            board.bind(1, emp);
            board.run();
        }
    }

    static std::string absentCode(Plain& addIn) {
        PlainStatement associations(addIn, "SELECT Accepted FROM tlyr_assoc");
        associations.next();
        return associations.text(0).toStdString();
    }

    void requireSameRows() const {
        const std::pair<const char*, const char*> tables[] = {
            {"bcx.mdb", "SELECT * FROM TimeHistory WHERE thist_attend_code LIKE 'OT%'"},
            {"aidb01.mdb", "SELECT User, Emp_Code, Date, Action, OT, tHistField FROM TLYR_Audit"},
            {"vrlxdb01.mdb", "SELECT * FROM tlyrTemp"}};
        for (const auto& [file, sql] : tables)
            requireSame(rowsOf(fileIn(product(), file), sql), rowsOf(fileIn(plain(), file), sql));
    }

    QTemporaryDir m_folders{QStringLiteral(TALLYROOM_BENCH_DATA "/answers-XXXXXX")};
    CanvassState m_state;
    AnswerRequest m_request;
};

} // namespace

void recordingAnswers() {
    printRow("4 an accept for 200 rows of a board of 5,000", AnswersJob(5000, 200).compare(5), 1.5);
}

void growthOfAnswers() {
    std::puts("\nrecording an accept for 50 rows      ms/answer    floor");
    for (const int board : {50, 500, 5000}) {
        const Comparison times = AnswersJob(board, 50).compare(5);
        std::printf("on a board of %5d %17.3f %10.3f\n", board, times.product * 20,
                    times.floor * 20);
    }
}

void costOfStanding() {
    std::puts("\nanswers on a board of 5,000          ms/answer  without  kB a command");
    for (const int answers : {1, 200}) {
        constexpr int rounds = 5;
        AnswersJob job(5000, answers);
        const Comparison times = job.compareStanding(rounds);
        std::printf("%4d in a command, with standing %14.3f %8.3f %12lld\n", answers,
                    times.product * 1000 / answers, times.floor * 1000 / answers,
                    static_cast<long long>(job.bytesOfStanding() / 1024));
    }
}

} // namespace tallyroom::bench
