// kill_desks RUNS: kills the server again and again while a desk, a process of its own, records one
// answer after the other, and looks what is there afterwards: all that the desk was told is
// recorded, at most one more, nothing twice and nothing in part.
#include "tests/canvass/Desk.h"
#include "tests/canvass/RecordedAnswers.h"
#include "tests/support/PostgresCluster.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QThread>
#include <cstdio>

namespace tallyroom {

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int employees = 200;
constexpr int longestRun = 250; // milliseconds

// Says each answer that it takes for recorded.
int work(const QString& address, const QString& date) {
    Desk desk(address, u"<> NULL"_s);
    if (!desk.count())
        return 1;
    for (int employee = 1; employee <= employees; ++employee) {
        const QString code = u"E%1"_s.arg(employee);
        const AnswerRecording::Result result = desk.accept({code}, date);
        if (result.failure)
            return 0;
        if (result.recorded != 1)
            return 1;
        std::printf("%s\n", qPrintable(code));
        std::fflush(stdout);
    }
    return 0;
}

struct Outcome {
    qsizetype told = 0;
    bool oneMore = false;
    QString fault;
};

Outcome killOnce(const DataFolder& site, const QString& date) {
    QProcess desk;
    desk.start(QCoreApplication::applicationFilePath(), {u"--desk"_s, site.path(), date});
    desk.waitForReadyRead(); // the first answer
    QThread::msleep(static_cast<unsigned long>(QRandomGenerator::global()->bounded(longestRun)));
    PostgresCluster::shared().kill();
    desk.waitForFinished();
    PostgresCluster::shared().start();
    const QStringList told =
        QString::fromUtf8(desk.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    const RecordedAnswers there(site, date);
    return {told.size(), there.hasMoreThan(told),
            desk.exitCode() == 0 ? there.fault(told) : u"the desk could not work"_s};
}

int killOften(int runs) {
    if (!PostgresCluster::skipReason().isEmpty()) {
        std::printf("SKIPPED: %s\n", qPrintable(PostgresCluster::skipReason()));
        return 0;
    }
    const DataFolder site;
    site.addHost(employees);
    site.associateAll();
    qsizetype told = 0;
    int oneMore = 0;
    for (int run = 0; run < runs; ++run) {
        const Outcome outcome =
            killOnce(site, QDate(2008, 1, 1).addDays(run).toString(u"M/d/yyyy"_s));
        if (!outcome.fault.isEmpty()) {
            std::printf("run %d: %s\n", run + 1, qPrintable(outcome.fault));
            return 1;
        }
        told += outcome.told;
        oneMore += outcome.oneMore ? 1 : 0;
    }
    std::printf(
        "%d kills, %lld answers told to be recorded, none lost, none twice; %d kept that the "
        "desk was not told of\n",
        runs, static_cast<long long>(told), oneMore);
    return 0;
}

} // namespace

} // namespace tallyroom

int main(int argc, char** argv) {
    qputenv("TALLYROOM_TESTS_ON_SERVER", "1");
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--desk"))
        return tallyroom::work(arguments.value(2), arguments.value(3));
    return tallyroom::killOften(arguments.value(1, QStringLiteral("20")).toInt());
}
