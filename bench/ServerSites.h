// A server of the benchmarks' own, with sites to measure on.
#pragma once

#include "tests/support/PostgresCluster.h"

namespace tallyroom::bench {

// Waits for the disk, as a server in use does; its other settings are the usual ones.
class ServerSites {
public:
    ServerSites();

    // Makes a site and lets the server look at its rows; gives its address.
    QString make(const QString& name, int employees, int days);

    QString address(const QString& name) const;
    QString conninfo() const { return m_cluster.conninfo(database()); }
    // Seconds of all its processes, those that have ended included.
    double processorTime() const;

private:
    static QString database() { return QStringLiteral("bench"); }

    PostgresCluster m_cluster;
};

} // namespace tallyroom::bench
