#include "bench/ServerSites.h"

#include "bench/BenchData.h"
#include "bench/Measure.h"

#include <QDir>
#include <QFile>
#include <cstdio>
#include <unistd.h>

namespace tallyroom::bench {

namespace {

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// What the kernel tells of a process, from its state on.
QList<QByteArray> statusOf(const QByteArray& process) {
    const QByteArray line =
        contents(QStringLiteral("/proc/") + QString::fromLatin1(process) + QStringLiteral("/stat"));
    return line.mid(line.lastIndexOf(')') + 2).split(' ');
}

constexpr int parent = 1;
constexpr int ownTime = 11; // and the next one; of children that have ended, the two after it

double ticks(const QList<QByteArray>& status, int count) {
    double sum = 0;
    for (int at = ownTime; at < ownTime + count; ++at)
        sum += status.value(at).toDouble();
    return sum;
}

} // namespace

ServerSites::ServerSites() : m_cluster(QStringList()) {
    m_cluster.createDatabase(database());
}

QString ServerSites::make(const QString& name, int employees, int days) {
    const double time = seconds([&] { makeData(address(name), employees, days); });
    std::fprintf(stderr, "Made a site of %d employees and %d days in %.1f s\n", employees, days,
                 time);
    m_cluster.execute(database(), QStringLiteral("VACUUM ANALYZE"));
    m_cluster.execute(database(), QStringLiteral("CHECKPOINT"));
    return address(name);
}

QString ServerSites::address(const QString& name) const {
    return QStringLiteral("postgresql://postgres@/%1/%2?host=%3")
        .arg(database(), name, m_cluster.folder());
}

double ServerSites::processorTime() const {
    const QByteArray server =
        contents(m_cluster.folder() + QStringLiteral("/data/postmaster.pid")).split('\n').front();
    double sum = ticks(statusOf(server), 4);
    for (const QString& process : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        const QList<QByteArray> status = statusOf(process.toLatin1());
        if (status.value(parent) == server)
            sum += ticks(status, 2);
    }
    return sum / static_cast<double>(sysconf(_SC_CLK_TCK));
}

} // namespace tallyroom::bench
