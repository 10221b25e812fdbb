// desks_bench [SECONDS]: desks, processes of their own, record answers and count their boards anew
// on one server: how many they get done, how long one waits, and how busy the server is with it.
#include "bench/BenchData.h"
#include "bench/Measure.h"
#include "bench/ServerSites.h"
#include "canvass/AnswerRecording.h"
#include "canvass/CanvassTotals.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <stdexcept>
#include <string>

namespace tallyroom::bench {

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int employees = 1000;
constexpr int days = 365;
constexpr int answersToARefresh = 4;
constexpr int patience = 60'000; // milliseconds

// A board without its window, and who works on it without a pause.
class Desk {
public:
    Desk(const QString& site, quint32 number) : m_host(hostOf(site)), m_random(number) {
        m_state.DataPath = site;
        m_state.listener = [](const QStringList&) {};
        m_state.period = TotallingPeriod{{lastDay().serial - 13}, lastDay()};
        m_state.openHostOptions();
        refresh();
        const auto rows = m_state.rows().openRecordset();
        for (; !rows->eof(); rows->moveNext())
            m_codes << rows->field(0).toText();
    }

    void work(int seconds) {
        for (const QDeadlineTimer end(seconds * 1000); !end.hasExpired();) {
            for (int answer = 0; answer < answersToARefresh; ++answer)
                tell("answer", [this] { record(); });
            tell("refresh", [this] { refresh(); });
        }
    }

private:
    static void tell(const char* what, const std::function<void()>& job) {
        std::printf("%s %.3f\n", what, seconds(job) * 1e3);
        QCoreApplication::processEvents(); // what other desks announce
    }

    void refresh() {
        const auto abort = [](const RunError&) { return ErrorAnswer::Abort; };
        if (!CanvassTotals::build(m_state, m_host.BucketForm, true, abort))
            throw std::runtime_error("a board could not be counted");
    }

    void record() {
        AnswerRequest request;
        request.employees = {m_codes.at(m_random.bounded(static_cast<int>(m_codes.size())))};
        request.accept = true;
        request.multiply = true;
        request.amount = u"1:30"_s;
        request.canvassDate = Dates::toText(lastDay());
        request.user = u"Ann"_s;
        if (AnswerRecording::record(m_state, request).recorded != 1)
            throw std::runtime_error("an answer could not be recorded");
    }

    HostContext m_host;
    CanvassState m_state;
    QStringList m_codes;
    QRandomGenerator m_random;
};

// Begins when it is told to.
void beDesk(const QString& site, quint32 number, int seconds) {
    Desk desk(site, number);
    std::puts("ready");
    std::fflush(stdout);
    std::string go;
    std::getline(std::cin, go);
    desk.work(seconds);
}

// Of one kind of work, milliseconds.
struct Waits {
    explicit Waits(const char* kind) : prefix(QByteArray(kind) + " ") {}
    void take(const QByteArray& line) {
        if (line.startsWith(prefix))
            all.push_back(line.mid(prefix.size()).toDouble());
    }
    double quantile(double part) const {
        return all.empty() ? 0 : all[static_cast<std::size_t>(part * double(all.size() - 1))];
    }
    void print(double seconds) {
        std::ranges::sort(all);
        std::printf(" %9.1f %9.2f %9.2f", double(all.size()) / seconds, quantile(0.5),
                    quantile(0.99));
    }

    QByteArray prefix;
    std::vector<double> all;
};

class Desks {
public:
    Desks(const QString& site, int count, int seconds) {
        for (int number = 1; number <= count; ++number) {
            auto& desk = m_all.emplace_back(std::make_unique<QProcess>());
            desk->setProcessChannelMode(QProcess::ForwardedErrorChannel);
            desk->start(QCoreApplication::applicationFilePath(),
                        {u"--desk"_s, site, QString::number(number), QString::number(seconds)});
        }
        for (const auto& desk : m_all) {
            while (!desk->canReadLine()) {
                if (!desk->waitForReadyRead(patience))
                    throw std::runtime_error("a desk did not begin");
            }
            desk->readLine();
        }
    }
    void go() {
        for (const auto& desk : m_all) {
            desk->write("go\n");
            desk->waitForBytesWritten();
        }
    }
    void collect(Waits& answers, Waits& refreshes) {
        for (const auto& desk : m_all) {
            if (!desk->waitForFinished(patience) || desk->exitCode() != 0)
                throw std::runtime_error("a desk failed");
            for (const QByteArray& line : desk->readAllStandardOutput().split('\n')) {
                answers.take(line);
                refreshes.take(line);
            }
        }
    }

private:
    std::vector<std::unique_ptr<QProcess>> m_all;
};

void measure(const ServerSites& server, const QString& site, int count, int seconds) {
    Desks desks(site, count, seconds);
    Waits answers("answer");
    Waits refreshes("refresh");
    const double before = server.processorTime();
    const double elapsed = bench::seconds([&] {
        desks.go();
        desks.collect(answers, refreshes);
    });
    const double busy = server.processorTime() - before;
    std::printf("%5d", count);
    answers.print(elapsed);
    refreshes.print(elapsed);
    std::printf(" %8.0f %%\n", 100 * busy / elapsed / QThread::idealThreadCount());
    std::fflush(stdout);
}

void measureAll(int seconds) {
    ServerSites server;
    const QString site = server.make(u"desks"_s, employees, days);
    std::puts("\ndesks on one server, four answers to a refresh; waits in ms\n"
              "desks answers/s    median      99 %  refr./s    median      99 %   server's CPU");
    for (const int count : {2, 4, 8})
        measure(server, site, count, seconds);
}

} // namespace

void run(const QStringList& arguments) {
    if (arguments.value(1) == u"--desk"_s)
        beDesk(arguments.value(2), arguments.value(3).toUInt(), arguments.value(4).toInt());
    else
        measureAll(arguments.value(1, u"10"_s).toInt());
}

} // namespace tallyroom::bench

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return tallyroom::bench::exitCodeOf(
        [] { tallyroom::bench::run(QCoreApplication::arguments()); });
}
