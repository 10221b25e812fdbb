// A connection to the server with its prepared statements.
#pragma once

#include "store/postgres/PostgresParameter.h"
#include "store/postgres/PostgresResult.h"

#include <QHash>
#include <chrono>
#include <functional>
#include <memory>

struct pg_conn;

namespace tallyroom {

struct PostgresStatement {
    QString native;
    PostgresParameters parameters;
};

// What a connection has heard on a channel that it listens to.
struct PostgresNotification {
    QString channel;
    QString text;
    bool isOwn = false; // sent by the same connection
};

// A server that cannot be reached is given up after some seconds, one that stops answering after
// the patience. Errors are RunErrors; they speak of the database by the name that is given here,
// and no secret is in them. After 3043 (the connection is gone) nothing but another connection
// helps.
class PostgresConnection {
public:
    // `conninfo` as ServerAddress has it. Raises 3151, 3029 or 3033 when the database is not to be
    // had.
    PostgresConnection(const QString& conninfo, const QString& name,
                       std::chrono::milliseconds patience = std::chrono::minutes(1));
    PostgresConnection(const PostgresConnection&) = delete;
    PostgresConnection& operator=(const PostgresConnection&) = delete;

    const QString& name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }

    PostgresResult run(const QString& native, const PostgresParameters& parameters = {});
    // All in one round trip, up to the first that fails, which is raised. Outside a transaction
    // they are one write, all or nothing; in one, what came before the failure is undone with it.
    std::vector<PostgresResult> runAll(const std::vector<PostgresStatement>& statements);

    // Appends rows to `target`, a table with its columns: s_bcx.t (a, b). All or nothing, in two
    // round trips; the first does what comes `before`, statements without parameters, as well.
    void copyRows(const QString& target, const std::vector<Row>& rows,
                  const QStringList& before = {});

    bool inTransaction() const; // also in one that has failed and waits for its rollback
    bool lost() const { return m_isLost; }
    // Whether the last failure was of a statement that had been prepared for tables as they were
    // before somebody changed them. What undoes the failure and repeats it has it prepared anew.
    bool isOutdated() const { return m_isOutdated; }
    qint64 roundTrips() const { return m_roundTrips; }

    // Readable when something has come from the server; -1 when the connection is gone.
    int socket() const;
    // What has come since the last call, without asking the server.
    std::vector<PostgresNotification> takeNotifications();

    // Calls back about every tenth of a second while the server is waited for; see Database.
    void setProgress(std::function<void()> callback) { m_progress = std::move(callback); }

private:
    enum class Purpose { Answer, Preparation, Cleaning, Settings };
    enum class Awaited { Answer, Room };
    struct Queued {
        Purpose purpose;
        QString native;
    };

    void requireConnection();
    void beginCopy(const QStringList& statements);
    [[noreturn]] void fail(const pg_result* result);
    [[noreturn]] void lose();
    [[noreturn]] void giveUp();
    void sendSettings();
    bool endRoundTrip();
    bool queue(const PostgresStatement& statement);
    bool prepare(const QString& native);
    bool forgetStatements();
    std::vector<PostgresResult> collect();
    std::vector<PostgresResult> answersOf(const std::vector<PostgresResult>& results);
    void noteFailure(const Queued& queued, const pg_result* failed, bool isFirst);
    PostgresResult nextResult();
    void wait(Awaited awaited);

    QString m_name;
    std::shared_ptr<pg_conn> m_connection;
    std::chrono::milliseconds m_patience;
    bool m_isLost = false;
    bool m_isOutdated = false;
    qint64 m_roundTrips = 0;
    std::function<void()> m_progress;
    QHash<QString, QByteArray> m_statements; // names on the server, by text
    qint64 m_namesGiven = 0;
    std::vector<Queued> m_queued; // on their way; the server gives one result for each
    int m_endsDue = 0;            // of round trips, which the server tells of as well
};

} // namespace tallyroom
