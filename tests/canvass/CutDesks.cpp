// cut_desks RUNS: cuts a desk's connection at a byte taken by chance of what an answer sends or is
// answered, and looks what is there afterwards: all that the desk was told is recorded, at most one
// more, nothing twice and nothing in part. The desk counts anew before it records again.
//
// cut_desks --delay MS: opens a board of 300 and records one answer over a network on which every
// question takes that much longer, and says how long that takes.
#include "canvass/Tallyroom.h"
#include "common/ui/Grid.h"
#include "store/postgres/PostgresSession.h"
#include "tests/canvass/Desk.h"
#include "tests/canvass/RecordedAnswers.h"
#include "tests/support/CutProxy.h"
#include "tests/support/PostgresCluster.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTimer>
#include <QUrl>
#include <cstdio>

namespace tallyroom {

namespace {

using namespace Qt::Literals::StringLiterals;

// A site, and the way to it through the proxy.
struct FarSite {
    explicit FarSite(int employees) {
        near.addHost(employees);
        near.associateAll();
    }
    QString address() const {
        const QString path = QUrl(near.path()).path();
        return u"postgresql://postgres@127.0.0.1:%1%2?application_name=far"_s.arg(proxy.port())
            .arg(path);
    }
    // The server may still be at what it has got before the cut. The desk may have connected again
    // meanwhile: that session stays.
    static void awaitEnd(const QDateTime& cutAfter) {
        PostgresCluster::shared().execute(
            u"postgres"_s,
            u"DO $$ BEGIN WHILE EXISTS (SELECT FROM pg_stat_activity WHERE application_name = "
            "'far' AND backend_start < '%1') LOOP PERFORM pg_sleep(0.002), "
            "pg_stat_clear_snapshot(); END LOOP; END $$"_s.arg(
                cutAfter.toUTC().toString(Qt::ISODateWithMs)));
    }

    DataFolder near;
    CutProxy proxy{PostgresCluster::shared().folder() + u"/.s.PGSQL.5432"_s};
};

struct Outcome {
    bool isCut = false;   // else the answer was shorter than the one before
    bool isKept = false;  // the answer that was cut
    bool wasTold = false; // of it
    QString fault;
};

class CutRun {
public:
    CutRun(FarSite& site, Desk& desk, const QString& date)
        : m_site(site), m_desk(desk), m_date(date) {}

    Outcome run() {
        const QString notRecorded = recordWhole(u"E1"_s);
        if (!notRecorded.isEmpty())
            return {false, false, false, notRecorded};
        cutWithin(m_site.proxy.counted(CutProxy::ToServer),
                  m_site.proxy.counted(CutProxy::ToClient));
        const QDateTime before = QDateTime::currentDateTime();
        const bool wasTold = m_desk.accept({u"E2"_s}, m_date).recorded == 1;
        if (wasTold)
            m_told << u"E2"_s;
        const bool isCut = !m_site.proxy.isCutDue();
        QString fault = isCut ? goOn(before) : QString();
        const RecordedAnswers there(m_site.near, m_date);
        if (fault.isEmpty())
            fault = there.fault(m_told);
        return {isCut, there.audit.contains(u"E2"_s), wasTold, fault};
    }

private:
    QString recordWhole(const QString& code) {
        m_site.proxy.countAnew();
        const AnswerRecording::Result result = m_desk.accept({code}, m_date);
        m_told << code;
        return result.recorded == 1 ? QString() : u"%1 could not be recorded"_s.arg(code);
    }

    // Half of the cuts are where the answer ends: in the commit, and right behind it.
    void cutWithin(qint64 sent, qint64 received) {
        constexpr qint64 lengthOfEnd = 100;
        QRandomGenerator& chance = *QRandomGenerator::global();
        const bool isSent = chance.bounded(2) == 0;
        const qint64 length = isSent ? sent : received;
        const qint64 most = chance.bounded(2) == 0 ? length : std::min(length, lengthOfEnd);
        m_site.proxy.cutAfter(isSent ? CutProxy::ToServer : CutProxy::ToClient,
                              length - chance.bounded(most + 1));
    }

    // Nothing is recorded until the board shows what is there.
    QString goOn(const QDateTime& before) {
        FarSite::awaitEnd(before);
        if (m_desk.accept({u"E3"_s}, m_date).recorded != 0)
            return u"the desk does not know that it was cut off"_s;
        if (!m_desk.state.rows().database()->isLost() || !m_desk.count())
            return u"the desk does not come back"_s;
        if (shown() != kept())
            return u"the board does not show what is recorded"_s;
        return recordWhole(u"E3"_s);
    }

    double shown() const {
        return sum(m_desk.state.rows().database(), u"Select Sum([xT15Accepted]) From tlyrTemp"_s);
    }
    double kept() const {
        return sum(m_site.near.open(hostFile), u"Select Sum([tlyrAccepted]) From TimeHistory"_s);
    }
    static double sum(const std::shared_ptr<Database>& database, const QString& query) {
        return database->openRecordset(query, RecordsetType::Snapshot)->field(0).toDouble();
    }

    FarSite& m_site;
    Desk& m_desk;
    QString m_date;
    QStringList m_told;
};

int cutOften(int runs) {
    FarSite site(20);
    Desk desk(site.address(), u"<> NULL"_s);
    if (!desk.count())
        return 1;
    int cuts = 0;
    int kept = 0;
    int told = 0;
    for (QDate date(2008, 1, 1); cuts < runs; date = date.addDays(1)) {
        const Outcome outcome = CutRun(site, desk, date.toString(u"M/d/yyyy"_s)).run();
        if (!outcome.fault.isEmpty()) {
            std::printf("after %d cuts: %s\n", cuts, qPrintable(outcome.fault));
            return 1;
        }
        cuts += outcome.isCut ? 1 : 0;
        kept += outcome.isCut && outcome.isKept ? 1 : 0;
        told += outcome.isCut && outcome.wasTold ? 1 : 0;
    }
    std::printf("%d cuts, no answer lost, none twice, none in part; of those that were cut %d were "
                "kept, and the desk was told of %d\n",
                cuts, kept, told);
    return 0;
}

// Says how long something takes, and how often the server is asked.
class Stopwatch {
public:
    explicit Stopwatch(const QString& address) : m_address(address + u"\\bcx.mdb"_s) {
        m_timer.start();
    }
    void lap(const char* what) {
        const qint64 time = m_timer.elapsed();
        const qint64 asked =
            PostgresSession::of(parseServerAddress(m_address))->connection().roundTrips();
        std::printf("%s: %lld ms, %lld questions\n", what, static_cast<long long>(time),
                    static_cast<long long>(asked - m_asked));
        m_asked = asked;
        m_timer.start();
    }

private:
    QString m_address;
    QElapsedTimer m_timer;
    qint64 m_asked = 0;
};

void work(Tallyroom& board, Stopwatch& time) {
    time.lap("opening a board of 300");
    board.findChild<QLineEdit*>(u"Text1"_s)->setText(u"2:00"_s);
    for (const char* which : {"the first answer", "the second answer", "the third answer"}) {
        board.findChild<Grid*>(u"Grid"_s)->selectRow(0);
        board.findChild<QAction*>(u"mnuAccept"_s)->trigger();
        time.lap(which);
    }
    board.findChild<QAction*>(u"mnuRefresh"_s)->trigger();
    time.lap("Refresh");
    board.findChild<QPushButton*>(u"Command1"_s)->click();
}

int workSlowly(int delay) {
    FarSite site(300);
    FakeHost host;
    const HostContext context = host.context(site.address());
    site.proxy.setDelay(std::chrono::milliseconds(delay));
    Stopwatch time(site.address());
    Tallyroom board(context);
    QTimer::singleShot(0, &board, [&] { work(board, time); });
    board.showModally();
    return 0;
}

} // namespace

} // namespace tallyroom

int main(int argc, char** argv) {
    using namespace tallyroom;
    qputenv("TALLYROOM_TESTS_ON_SERVER", "1");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (const QString reason = PostgresCluster::skipReason(); !reason.isEmpty()) {
        std::printf("SKIPPED: %s\n", qPrintable(reason));
        return 0;
    }
    const QStringList arguments = QApplication::arguments();
    return arguments.value(1) == QLatin1String("--delay")
               ? workSlowly(arguments.value(2).toInt())
               : cutOften(arguments.value(1, QStringLiteral("20")).toInt());
}
