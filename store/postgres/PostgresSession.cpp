#include "store/postgres/PostgresSession.h"

#include "store/ErrorSource.h"
#include "store/postgres/PostgresVersion.h"

#include <QHash>

namespace tallyroom {

namespace {

const QString savepoint = QStringLiteral("SAVEPOINT tr_statement");
const QString release = QStringLiteral("RELEASE SAVEPOINT tr_statement");
const QString backToSavepoint = QStringLiteral("ROLLBACK TO SAVEPOINT tr_statement");

QString siteOf(const ServerAddress& address) {
    return address.conninfo + u'/' + address.site.toLower();
}

} // namespace

std::shared_ptr<PostgresSession> PostgresSession::of(const ServerAddress& address) {
    static QHash<QString, std::weak_ptr<PostgresSession>> sessions;
    // The last one outlives its users: a program opens and closes the same site again and again.
    static std::shared_ptr<PostgresSession> last;
    const QString site = siteOf(address);
    auto session = sessions.value(site).lock();
    if (!session || session->m_connection.lost()) {
        session = std::make_shared<PostgresSession>(address);
        sessions.insert(site, session);
    }
    last = session;
    return session;
}

PostgresSession::PostgresSession(const ServerAddress& address)
    : m_connection(address.conninfo, address.shown), m_tables(m_connection) {
    requireFunctions(m_connection);
}

// What goes before the next statement.
std::vector<PostgresStatement> PostgresSession::beginning() const {
    std::vector<PostgresStatement> statements;
    if (m_told != m_whenInUse)
        statements.push_back({m_whenInUse == WhenInUse::Wait
                                  ? QStringLiteral("SET lock_timeout = '2s'")
                                  : QStringLiteral("SET lock_timeout = '1ms'"),
                              {}});
    if (m_depth > 0 && !m_connection.inTransaction())
        statements.push_back({m_kind == TransactionKind::Read
                                  ? QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ")
                                  : QStringLiteral("BEGIN"),
                              {}});
    return statements;
}

// Gives the results of the statements themselves.
std::vector<PostgresResult> PostgresSession::send(std::vector<PostgresStatement> statements) {
    std::vector<PostgresStatement> all = beginning();
    const auto before = static_cast<std::ptrdiff_t>(all.size());
    std::move(statements.begin(), statements.end(), std::back_inserter(all));
    m_told.reset(); // a failure undoes it
    std::vector<PostgresResult> results = m_connection.runAll(all);
    m_told = m_whenInUse;
    results.erase(results.begin(), results.begin() + before);
    return results;
}

PostgresResult PostgresSession::read(const QString& native, const PostgresParameters& parameters) {
    return sendGuarded({{native, parameters}}).front();
}

PostgresResult PostgresSession::write(const QString& schema, const QString& native,
                                      const PostgresParameters& parameters) {
    ++m_writes[schema];
    return sendGuarded({{native, parameters}}).front();
}

void PostgresSession::writeAll(const QString& schema, std::vector<PostgresStatement> statements) {
    ++m_writes[schema];
    sendGuarded(std::move(statements));
}

// The engine gives a transaction up with any statement that fails, the desktop engine does not.
std::vector<PostgresResult>
PostgresSession::sendGuarded(std::vector<PostgresStatement> statements) {
    if (m_depth == 0)
        return send(std::move(statements));
    statements.insert(statements.begin(), {savepoint, {}});
    statements.push_back({release, {}});
    try {
        std::vector<PostgresResult> results = send(std::move(statements));
        results.erase(results.begin());
        results.pop_back();
        return results;
    } catch (const RunError&) {
        if (!m_connection.lost())
            m_connection.runAll({{backToSavepoint, {}}, {release, {}}});
        throw;
    }
}

void PostgresSession::copyRows(const QString& schema, const QString& target,
                               const std::vector<Row>& rows) {
    if (m_depth > 0 && !m_connection.inTransaction())
        send({});
    ++m_writes[schema];
    m_connection.copyRows(target, rows);
}

void PostgresSession::begin(TransactionKind kind) {
    if (m_depth++ > 0)
        return;
    m_kind = kind;
    m_isGivenUp = false;
}

void PostgresSession::commit() {
    Q_ASSERT(m_depth > 0);
    if (m_depth > 1) {
        --m_depth;
        return;
    }
    if (m_isGivenUp) {
        rollback();
        throw RunError::make(ErrorNumber::invalidOperation, {}, ErrorSource::database);
    }
    m_depth = 0;
    if (!m_connection.inTransaction()) // there was nothing to do
        return;
    m_connection.run(QStringLiteral("COMMIT"));
}

void PostgresSession::rollback() noexcept {
    m_isGivenUp = true;
    ++m_undone;
    m_told.reset();
    if (--m_depth > 0)
        return;
    try {
        if (m_connection.inTransaction())
            m_connection.run(QStringLiteral("ROLLBACK"));
    } catch (const RunError&) {
        // The connection is gone, and the transaction with it; who uses it next is told.
    }
}

} // namespace tallyroom
