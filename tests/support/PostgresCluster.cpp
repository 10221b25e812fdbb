#include "tests/support/PostgresCluster.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QStandardPaths>
#include <csignal>
#include <grp.h>
#include <libpq-fe.h>
#include <memory>
#include <pwd.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <unistd.h>

namespace tallyroom {

namespace {

constexpr int patience = 60'000; // milliseconds
constexpr int pollInterval = 20;

// Where Debian keeps the server's programs, the newest first; they are not on the path.
QStringList serverFolders() {
    constexpr int oldestServed = 15;
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    QStringList folders;
    for (int version = 99; version >= oldestServed; --version)
        if (versions.exists(QString::number(version)))
            folders << versions.filePath(QStringLiteral("%1/bin").arg(version));
    return folders;
}

QString program(const QString& name) {
    const QString found = QStandardPaths::findExecutable(name, serverFolders());
    return found.isEmpty() ? QStandardPaths::findExecutable(name) : found;
}

// The server refuses to run as root; null when this program does not.
const passwd* serverUser() {
    if (geteuid() != 0)
        return nullptr;
    const passwd* user = getpwnam("postgres");
    return user ? user : getpwnam("nobody");
}

QString folderTemplate() {
    return QStringLiteral("%1/tallyroom-postgres-%2-XXXXXX").arg(QDir::tempPath()).arg(getpid());
}

// A program that crashed has left its folder behind; its server has ended by itself.
void removeStaleFolders() {
    QDir all(QDir::tempPath(), QStringLiteral("tallyroom-postgres-*"));
    for (const QString& name : all.entryList(QDir::Dirs)) {
        const int owner = name.section(u'-', 2, 2).toInt();
        if (owner > 0 && ::kill(owner, 0) != 0 && errno == ESRCH)
            QDir(all.filePath(name)).removeRecursively();
    }
}

// Runs in the new process before the program does.
void becomeServerUser(const passwd* user) {
    if (user &&
        (setgroups(0, nullptr) != 0 || setgid(user->pw_gid) != 0 || setuid(user->pw_uid) != 0))
        _exit(1);
    // Last, for a change of user undoes it: who starts the server takes it along when it dies.
    prctl(PR_SET_PDEATHSIG, SIGQUIT);
}

void require(bool done, const QString& what) {
    if (!done)
        throw std::runtime_error("PostgreSQL: " + what.toStdString());
}

} // namespace

QString PostgresCluster::skipReason() {
    const bool found = !program(QStringLiteral("initdb")).isEmpty() &&
                       !program(QStringLiteral("postgres")).isEmpty();
    return found ? QString() : QStringLiteral("the programs of the PostgreSQL server are missing");
}

PostgresCluster& PostgresCluster::shared() {
    static PostgresCluster cluster;
    return cluster;
}

PostgresCluster::PostgresCluster(const QStringList& options)
    : m_options(options), m_folder(folderTemplate()) {
    removeStaleFolders();
    if (const passwd* user = serverUser())
        require(chown(QFile::encodeName(folder()).constData(), user->pw_uid, user->pw_gid) == 0,
                QStringLiteral("the folder cannot be given away"));
    QProcess maker;
    launch(maker, QStringLiteral("initdb"),
           {QStringLiteral("--encoding=UTF8"), QStringLiteral("--locale=C"),
            QStringLiteral("--username=postgres"), QStringLiteral("--auth=trust"),
            QStringLiteral("--no-sync"), QStringLiteral("--pgdata=") + data()});
    require(maker.waitForFinished(patience) && maker.exitCode() == 0,
            QString::fromLocal8Bit(maker.readAllStandardError()));
    m_server.setStandardErrorFile(m_folder.filePath(QStringLiteral("log")), QIODevice::Append);
    start();
}

PostgresCluster::~PostgresCluster() {
    if (m_server.state() == QProcess::NotRunning)
        start(); // after SIGKILL shared memory is left, which only a server cleans up
    stop();
}

void PostgresCluster::launch(QProcess& process, const QString& name, const QStringList& arguments) {
    QProcessEnvironment environment; // none of the settings of who runs the tests
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder());
    process.setChildProcessModifier([user = serverUser()] { becomeServerUser(user); });
    process.start(program(name), arguments);
}

QString PostgresCluster::conninfo(const QString& database) const {
    return QStringLiteral("host='%1' user=postgres dbname='%2'").arg(folder(), database);
}

void PostgresCluster::createDatabase(const QString& name) {
    execute(QStringLiteral("postgres"), QStringLiteral("CREATE DATABASE \"%1\"").arg(name));
}

void PostgresCluster::execute(const QString& database, const QString& sql) {
    const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(
        PQconnectdb(conninfo(database).toUtf8().constData()), PQfinish);
    PQsetNoticeProcessor(
        connection.get(), [](void*, const char*) {}, nullptr);
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(
        PQexec(connection.get(), sql.toUtf8().constData()), PQclear);
    const ExecStatusType status = PQresultStatus(result.get());
    require(status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK,
            QString::fromUtf8(PQerrorMessage(connection.get())));
}

void PostgresCluster::stop() {
    ::kill(static_cast<pid_t>(m_server.processId()), SIGQUIT);
    m_server.waitForFinished(patience);
}

void PostgresCluster::kill() {
    m_server.kill();
    m_server.waitForFinished(patience);
}

// After a crash the processes of the old server keep a new one out for a moment: once more, then.
void PostgresCluster::start() {
    const QDeadlineTimer deadline(patience);
    while (PQping(conninfo().toUtf8().constData()) != PQPING_OK) {
        require(!deadline.hasExpired(), QStringLiteral("the server does not start"));
        if (m_server.state() == QProcess::NotRunning)
            launch(m_server, QStringLiteral("postgres"),
                   QStringList{QStringLiteral("-D"), data(), QStringLiteral("-k"), folder(),
                               QStringLiteral("-h"), QString()} +
                       m_options);
        m_server.waitForFinished(pollInterval);
    }
}

} // namespace tallyroom
