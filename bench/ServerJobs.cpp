// Jobs 1 to 4 with the data on a server, each beside hand-written SQL that does the same work.
// Behind them stands how often the product waits for the server to answer.
#include "bench/BenchData.h"
#include "bench/BoardWindow.h"
#include "bench/Measure.h"
#include "bench/Plain.h"
#include "bench/PlainBoard.h"
#include "bench/PlainServer.h"
#include "bench/ServerSites.h"
#include "canvass/AnswerRecording.h"
#include "canvass/CanvassTotals.h"
#include "store/postgres/PostgresSession.h"

#include <QApplication>
#include <cstdio>
#include <stdexcept>
#include <tuple>

namespace tallyroom::bench {

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr double target = 1.5;

// How often the last of several runs of a job asks a site.
class Counted {
public:
    explicit Counted(const QString& site) : m_address(parseServerAddress(site + u"\\bcx.mdb"_s)) {}

    double seconds(const std::function<void()>& job) {
        const long before = asked();
        const double time = bench::seconds(job);
        m_last = asked() - before;
        return time;
    }
    long last() const { return m_last; }

private:
    long asked() const {
        return static_cast<long>(PostgresSession::of(m_address)->connection().roundTrips());
    }

    ServerAddress m_address;
    long m_last = 0;
};

// A board of everybody on a site.
class Board {
public:
    explicit Board(const QString& site) : m_host(hostOf(site)) {
        m_state.DataPath = site;
        m_state.openHostOptions();
    }
    CanvassState& state() { return m_state; }

    void build() {
        std::ignore =
            CanvassTotals::build(m_state, m_host.BucketForm, false, [](const RunError& error) {
                throw std::runtime_error(error.description().toStdString());
                return ErrorAnswer::Abort;
            });
    }
    QStringList rows() {
        const auto recordset = m_state.rows().database()->openRecordset(
            u"Select "_s + QString(comparedColumns).remove(u'"') +
                u" From tlyrTemp Order By emp_code"_s,
            RecordsetType::Snapshot);
        QStringList result;
        for (; !recordset->eof(); recordset->moveNext()) {
            QStringList cells;
            for (int at = 0; at < recordset->fieldCount(); ++at)
                cells << (recordset->field(at).isNull() ? QString()
                                                        : recordset->field(at).toText());
            result << cells.join(u'|');
        }
        return result;
    }

private:
    HostContext m_host;
    CanvassState m_state;
};

QStringList rowsOf(PlainServer& server) {
    return server.rows(u"SELECT "_s + comparedColumns +
                       u" FROM pg_temp.\"tlyrTemp\" ORDER BY emp_code"_s);
}

void totals(const ServerSites& server, const char* job, int rounds,
            const std::optional<TotallingPeriod>& period) {
    const QString site = u"big"_s;
    Board product(server.address(site));
    PlainServerBoard floor(server.conninfo(), site);
    Counted asked(server.address(site));
    product.state().period = period;
    const Comparison times = inTurns(
        rounds, [&] { return asked.seconds([&] { product.build(); }); },
        [&] { return seconds([&] { floor.write(period); }); },
        [&] { requireSame(product.rows(), rowsOf(floor.connection())); });
    printRow(job, times, target, asked.last());
}

void totalsOfTwoWeeks(ServerSites& server) {
    totals(server, "1 totals of 5,000 employees over 14 days", 9,
           TotallingPeriod{{lastDay().serial - 13}, lastDay()});
}

void totalsOfAllDates(ServerSites& server) {
    totals(server, "2 the same over all 5.2 million history rows", 5, {});
}

void gridFill(ServerSites& server) {
    const QString site = server.make(u"grid"_s, 5000, 30);
    PlainServerBoard floor(server.conninfo(), u"grid"_s);
    floor.write(TotallingPeriod::read(site));
    withBoard(site, [&](Tallyroom& window) {
        showEverything(window);
        auto& grid = child<Grid>(window, "Grid");
        QTableView view;
        BareModel model;
        view.resize(grid.size());
        view.setModel(&model);
        view.show();
        QCoreApplication::processEvents();
        Counted asked(site);
        const auto update = [&] {
            window.Update();
            grid.viewport()->repaint();
        };
        const auto bare = [&] {
            model.setRows(floor.sortedRows());
            view.viewport()->repaint();
        };
        const Comparison times = inTurns(
            9, [&] { return asked.seconds(update); }, [&] { return seconds(bare); },
            [&] { requireSame(codesOf(grid), model.firstColumn()); });
        printRow("3 filling the grid, 5,000 rows, all columns, sorted", times, target,
                 asked.last());
    });
}

// One statement records an answer: nothing can be asked less often.
QString answerStatement(const QString& site) {
    return uR"(
WITH shift AS (
    SELECT emp_shift, coalesce(defaulttimecalc, "Shift_Rule_Num") AS rule
    FROM %1_bcx."Employee" JOIN %1_bcx."Shift" ON "Shift_Code" = emp_shift
    WHERE tallyroom.tr_nocase(emp_code) = tallyroom.tr_nocase($1)),
history AS (
    INSERT INTO %1_bcx."TimeHistory" (thist_emp, rule, thist_date, shift_date, thist_record_type,
        thist_shift, thist_dept, thist_start_time, thist_stop_time, thist_attend_code,
        "tlyrAccepted", "Notes")
    SELECT $1, rule, $2::timestamp, $2::timestamp, 'AR', emp_shift, 'Dept', '1899-12-30 01:30:00',
        '1899-12-30 00:00:00', $3, 90, '' FROM shift),
audit AS (
    INSERT INTO %1_aidb01."TLYR_Audit" ("Now", "User", "Emp_Code", "Date", "Action", "OT",
        "tHistField")
    VALUES (localtimestamp, 'Ann', $1, $2::timestamp, 0, 90, 'tlyrAccepted')),
board AS (
    UPDATE pg_temp."tlyrTemp" SET "xT15Accepted" = coalesce("xT15Accepted", 0) + 90,
        "T15Accepted" = coalesce("xT15Accepted", 0) + 90, "AcceptedOT" = "AcceptedOT" + 90,
        "TotalOT1" = "TotalOT1" + 90
    WHERE tallyroom.tr_nocase(emp_code) = tallyroom.tr_nocase($1))
SELECT pg_notify('tr_%1', 'answer recorded'))"_s.arg(site);
}

AnswerRequest requestOf(const QStringList& employees) {
    AnswerRequest request;
    request.employees = employees;
    request.accept = true;
    request.amount = u"1:30"_s;
    request.canvassDate = Dates::toText(lastDay());
    request.department = u"Dept"_s;
    request.user = u"Ann"_s;
    return request;
}

// What answers leave in a site's tables.
QStringList recordedIn(PlainServer& server, const QString& site) {
    return server.rows(u"SELECT thist_emp, rule, shift_date, thist_shift, thist_attend_code, "
                       "\"tlyrAccepted\" FROM %1_bcx.\"TimeHistory\" "
                       "WHERE thist_attend_code LIKE 'OT%' ORDER BY tr_key"_s.arg(site)) +
           server.rows(u"SELECT \"User\", \"Emp_Code\", \"Date\", \"Action\", \"OT\", "
                       "\"tHistField\" FROM %1_aidb01.\"TLYR_Audit\" ORDER BY tr_key"_s.arg(site));
}

// Each side has a site: what one records must not help or hinder the other.
void recordingAnswers(ServerSites& server) {
    const QString site = server.make(u"product"_s, 5000, 30);
    server.make(u"plain"_s, 5000, 30);
    Board product(site);
    PlainServerBoard floor(server.conninfo(), u"plain"_s);
    PlainServer& plain = floor.connection();
    product.build();
    floor.write({});
    plain.prepare("answer", answerStatement(u"plain"_s));
    const QStringList employees =
        plain.rows(u"SELECT emp_code FROM plain_bcx.\"Employee\" ORDER BY emp_code LIMIT 200"_s);
    const QString code = plain.rows(u"SELECT \"Accepted\" FROM plain_aidb01.tlyr_assoc"_s).front();
    const QString date = Dates::toIso(lastDay());
    const AnswerRequest request = requestOf(employees);
    Counted asked(site);
    const auto record = [&] {
        if (const auto failure = AnswerRecording::record(product.state(), request).failure)
            throw std::runtime_error(failure->description().toStdString());
    };
    const auto write = [&] {
        for (const QString& employee : employees)
            plain.runPrepared("answer", {employee, date, code});
    };
    const Comparison times = inTurns(
        5, [&] { return asked.seconds(record); }, [&] { return seconds(write); },
        [&] {
            requireSame(recordedIn(plain, u"product"_s), recordedIn(plain, u"plain"_s));
            requireSame(product.rows(), rowsOf(plain));
        });
    printRow("4 an accept for 200 rows of a board of 5,000", times, target, asked.last());
}

} // namespace

void measure(const QStringList& wanted) {
    constexpr std::pair<char16_t, void (*)(ServerSites&)> jobs[] = {{u'1', totalsOfTwoWeeks},
                                                                    {u'2', totalsOfAllDates},
                                                                    {u'3', gridFill},
                                                                    {u'4', recordingAnswers}};
    ServerSites server;
    const auto isWanted = [&](char16_t name) {
        return wanted.isEmpty() || wanted.contains(QString(QChar(name)));
    };
    if (isWanted(u'1') || isWanted(u'2'))
        server.make(u"big"_s, 5000, 1430);
    printHeading();
    for (const auto& [name, run] : jobs) {
        if (isWanted(name))
            run(server);
    }
}

} // namespace tallyroom::bench

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return tallyroom::bench::exitCodeOf(
        [] { tallyroom::bench::measure(QApplication::arguments().mid(1)); });
}
