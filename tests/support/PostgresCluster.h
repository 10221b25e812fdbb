// A PostgreSQL server of the program's own, in a temporary folder.
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tallyroom {

// Listens on a socket in its folder alone. Neither server nor folder outlives the program for long,
// however that ends.
class PostgresCluster {
public:
    // Why there can be no server here; empty when there can be one.
    static QString skipReason();

    // The program's server. It is made at the first call, which takes about two seconds.
    static PostgresCluster& shared();

    // With these options of the server; by itself it does not wait for the disk.
    explicit PostgresCluster(const QStringList& options = {QStringLiteral("-F")});
    ~PostgresCluster();
    PostgresCluster(const PostgresCluster&) = delete;
    PostgresCluster& operator=(const PostgresCluster&) = delete;

    QString folder() const { return m_folder.path(); }
    // For libpq, as the owner of everything.
    QString conninfo(const QString& database = QStringLiteral("postgres")) const;

    void createDatabase(const QString& name);
    // As another program does.
    void execute(const QString& database, const QString& sql);

    // All connections are cut, by an immediate stop or by SIGKILL; start() has the same data again.
    void stop();
    void kill();
    void start();

private:
    QString data() const { return m_folder.filePath(QStringLiteral("data")); }
    void launch(QProcess& process, const QString& program, const QStringList& arguments);

    QStringList m_options;
    QTemporaryDir m_folder;
    QProcess m_server;
};

} // namespace tallyroom
