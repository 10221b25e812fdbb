// The one connection by which a board works on all files of a site.
#pragma once

#include "store/Database.h"
#include "store/postgres/PostgresCatalog.h"
#include "store/postgres/PostgresConnection.h"
#include "store/postgres/ServerAddress.h"
#include "store/sql/Generator.h"

#include <QSocketNotifier>

namespace tallyroom {

// For whom a session works: it serves the files of a site in turn.
struct PostgresCaller {
    QString name; // the file's, for messages
    WhenInUse whenInUse = WhenInUse::Wait;
};

inline PostgresStatement statementOf(const sql::Native& native) {
    return {native.text, {native.values.begin(), native.values.end()}};
}

// What a statement needs besides itself, the waiting time for locks, a transaction's beginning and
// a mark to come back to, goes to the server in the same round trip. Not for several threads.
class PostgresSession {
public:
    // The session that this program has with the site, if its connection still stands, or a new
    // one. Raises what PostgresConnection does, and 3343 for a database that has not been prepared
    // or whose functions are of another version.
    static std::shared_ptr<PostgresSession> of(const ServerAddress& address);
    // A session that of() gives as well until it is forgotten, whether or not the database has been
    // prepared.
    static std::shared_ptr<PostgresSession> ofNewSite(const ServerAddress& address);
    static void forget(const PostgresSession& session);

    explicit PostgresSession(const ServerAddress& address);
    PostgresSession(const PostgresSession&) = delete;
    PostgresSession& operator=(const PostgresSession&) = delete;

    PostgresConnection& connection() { return m_connection; }
    PostgresTables& tables() { return m_tables; }

    PostgresResult read(const QString& native, const PostgresParameters& parameters = {});
    PostgresResult read(const sql::Native& native) {
        return sendGuarded({statementOf(native)}).front();
    }
    std::vector<PostgresResult> readAll(const std::vector<PostgresStatement>& statements) {
        return sendGuarded(statements);
    }
    // In a transaction a failure undoes this statement alone. `schema` is that of what is written.
    PostgresResult write(const QString& schema, const PostgresStatement& statement);
    PostgresResult write(const QString& schema, const sql::Native& native) {
        return write(schema, statementOf(native));
    }
    // All or nothing.
    void writeAll(const QString& schema, const std::vector<PostgresStatement>& statements);
    // Likewise, in a transaction; after the statement `first`, if there is one.
    void copyRows(const QString& schema, const QString& target, const std::vector<Row>& rows,
                  const QString& first = {});

    // Stays the same as long as this session changes nothing in the schema.
    qint64 changes(const QString& schema) const { return m_writes.value(schema) + m_undone; }

    // Transactions of the site's files nest: the outermost one is the server's, and what any of
    // them gives up is given up by all.
    void begin(TransactionKind kind);
    bool commit(); // false when an outer one is still open
    void rollback() noexcept;

    // A part of the open transaction that is kept or undone by itself. Parts do not nest.
    void beginPart();
    void keepPart();
    void undoPart() noexcept;

    // See Database. A callback belongs to the file that gave it.
    void announce(const QString& news);
    void setListener(const Database* owner, std::function<void(const QStringList&)> callback);
    void setProgress(const Database* owner, std::function<void()> callback);
    void endCallbacksOf(const Database* owner) noexcept;

    void workFor(const PostgresCaller& caller) {
        m_connection.setName(caller.name);
        m_whenInUse = caller.whenInUse;
    }

private:
    std::vector<PostgresStatement> beginning() const;
    std::vector<PostgresResult> send(std::vector<PostgresStatement> statements);
    std::vector<PostgresResult> sendGuarded(const std::vector<PostgresStatement>& statements);
    std::vector<PostgresResult> sendUndoable(std::vector<PostgresStatement> statements);
    std::vector<PostgresStatement> takeAnnouncements();
    void backToSavepoint();
    void keep();
    void listen();
    void hear();
    void tell();

    PostgresConnection m_connection;
    PostgresTables m_tables;
    QHash<QString, qint64> m_writes;       // statements, by schema
    QHash<QString, qint64> m_writesBefore; // the open transaction
    qint64 m_undone = 0;                   // transactions that have written
    int m_depth = 0;          // of transactions; the server learns of them with the next statement
    bool m_isGivenUp = false; // by a part of it
    TransactionKind m_kind = TransactionKind::Write;
    WhenInUse m_whenInUse = WhenInUse::Wait;
    std::optional<WhenInUse> m_told = WhenInUse::Wait; // what the server knows, if that is known
    QString m_channel;                                 // of the site
    QStringList m_toAnnounce;                          // with the open transaction
    QStringList m_heard;                               // which the listener has not been told
    std::function<void(const QStringList&)> m_listener;
    const Database* m_listens = nullptr;         // whose listener it is
    const Database* m_progresses = nullptr;      // likewise
    std::unique_ptr<QSocketNotifier> m_notifier; // of what comes while nothing is asked
};

} // namespace tallyroom
