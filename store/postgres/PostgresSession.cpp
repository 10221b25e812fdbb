#include "store/postgres/PostgresSession.h"

#include "store/ErrorSource.h"
#include "store/postgres/PostgresVersion.h"

#include <QHash>
#include <algorithm>
#include <utility>

namespace tallyroom {

namespace {

const QString savepoint = QStringLiteral("SAVEPOINT tr_statement");
const QString release = QStringLiteral("RELEASE SAVEPOINT tr_statement");

// The answer to a commit may have been lost, or the question.
RunError fateUnknown(const RunError& error) {
    return {error.number(),
            error.description() + QStringLiteral(" What was being recorded may have been kept: see "
                                                 "whether it is there before you repeat it."),
            error.source()};
}

QString siteOf(const ServerAddress& address) {
    return address.conninfo + u'/' + address.site.toLower();
}

struct Sessions {
    QHash<QString, std::weak_ptr<PostgresSession>> all; // by site
    // Outlives its users: a program opens and closes the same site again and again.
    std::shared_ptr<PostgresSession> last;
};

Sessions& sessions() {
    static Sessions kept;
    return kept;
}

} // namespace

std::shared_ptr<PostgresSession> PostgresSession::of(const ServerAddress& address) {
    const QString site = siteOf(address);
    auto session = sessions().all.value(site).lock();
    if (session)
        session->hear(); // whether the server has gone meanwhile
    if (!session || session->m_connection.lost()) {
        session = std::make_shared<PostgresSession>(address);
        requireFunctions(session->m_connection);
        sessions().all.insert(site, session);
    }
    sessions().last = session;
    return session;
}

std::shared_ptr<PostgresSession> PostgresSession::ofNewSite(const ServerAddress& address) {
    auto session = std::make_shared<PostgresSession>(address);
    sessions().all.insert(siteOf(address), session);
    return session;
}

void PostgresSession::forget(const PostgresSession& session) {
    sessions().all.removeIf([&](auto entry) { return entry.value().lock().get() == &session; });
    if (sessions().last.get() == &session)
        sessions().last.reset();
}

PostgresSession::PostgresSession(const ServerAddress& address)
    : m_connection(address.conninfo, address.shown),
      m_tables(m_connection, schemasOf(address.site)),
      m_channel(QStringLiteral("tr_") + address.site.toLower()) {}

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
    hear();
    results.erase(results.begin(), results.begin() + before);
    return results;
}

PostgresResult PostgresSession::read(const QString& native, const PostgresParameters& parameters) {
    return sendGuarded({{native, parameters}}).front();
}

PostgresResult PostgresSession::write(const QString& schema, const PostgresStatement& statement) {
    ++m_writes[schema];
    return sendGuarded({statement}).front();
}

void PostgresSession::writeAll(const QString& schema,
                               const std::vector<PostgresStatement>& statements) {
    ++m_writes[schema];
    sendGuarded(statements);
}

// Somebody who changes a table under a desk does not make its statements fail.
std::vector<PostgresResult>
PostgresSession::sendGuarded(const std::vector<PostgresStatement>& statements) {
    try {
        return sendUndoable(statements);
    } catch (const RunError&) {
        if (!m_connection.isOutdated() || m_connection.lost())
            throw;
    }
    return sendUndoable(statements);
}

// The engine gives a transaction up with any statement that fails, the desktop engine does not.
std::vector<PostgresResult>
PostgresSession::sendUndoable(std::vector<PostgresStatement> statements) {
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
        backToSavepoint();
        throw;
    }
}

void PostgresSession::backToSavepoint() {
    if (!m_connection.lost())
        m_connection.runAll(
            {{QStringLiteral("ROLLBACK TO SAVEPOINT tr_statement"), {}}, {release, {}}});
}

void PostgresSession::copyRows(const QString& schema, const QString& target,
                               const std::vector<Row>& rows, const QString& first) {
    Q_ASSERT(m_depth > 0);
    ++m_writes[schema];
    QStringList before;
    for (const PostgresStatement& statement : beginning())
        before << statement.native;
    before << savepoint;
    if (!first.isEmpty())
        before << first;
    m_told.reset();
    try {
        m_connection.copyRows(target, rows, before);
    } catch (const RunError&) {
        backToSavepoint();
        throw;
    }
    m_told = m_whenInUse;
    hear();
}

void PostgresSession::begin(TransactionKind kind) {
    if (m_depth++ > 0)
        return;
    m_kind = kind;
    m_isGivenUp = false;
    m_writesBefore = m_writes;
}

bool PostgresSession::commit() {
    Q_ASSERT(m_depth > 0);
    if (m_depth > 1) {
        --m_depth;
        return false;
    }
    if (m_isGivenUp) {
        rollback();
        throw RunError::make(ErrorNumber::invalidOperation, {}, ErrorSource::database);
    }
    keep();
    return true;
}

// The server learns of the end even when there was nothing to do but to announce. What it has not
// been told to keep is gone with the connection.
void PostgresSession::keep() {
    std::vector<PostgresStatement> statements = takeAnnouncements();
    m_depth = 0;
    if (m_connection.lost())
        throw RunError::make(ErrorNumber::connectionLost);
    if (m_connection.inTransaction())
        statements.push_back({QStringLiteral("COMMIT"), {}});
    if (statements.empty())
        return;
    try {
        const PostgresResult end = m_connection.runAll(statements).back();
        if (end.command() == "ROLLBACK")
            throw RunError::make(ErrorNumber::invalidOperation, {}, ErrorSource::database);
        hear(); // others' news come with the end of a transaction
    } catch (const RunError& error) {
        if (m_connection.lost())
            throw fateUnknown(error);
        rollback();
        throw;
    }
}

void PostgresSession::rollback() noexcept {
    m_isGivenUp = true;
    if (m_writes != m_writesBefore)
        ++m_undone;
    m_told.reset();
    m_toAnnounce.clear();
    m_depth = std::max(m_depth - 1, 0);
    if (m_depth > 0)
        return;
    try {
        if (m_connection.inTransaction())
            m_connection.run(QStringLiteral("ROLLBACK"));
        hear();
    } catch (const RunError&) {
        // The connection is gone, and the transaction with it; who uses it next is told.
    }
}

void PostgresSession::beginPart() {
    Q_ASSERT(m_depth > 0);
    send({{QStringLiteral("SAVEPOINT tr_part"), {}}});
}

void PostgresSession::keepPart() {
    m_connection.run(QStringLiteral("RELEASE SAVEPOINT tr_part"));
}

void PostgresSession::undoPart() noexcept {
    try {
        m_connection.runAll({{QStringLiteral("ROLLBACK TO SAVEPOINT tr_part"), {}},
                             {QStringLiteral("RELEASE SAVEPOINT tr_part"), {}}});
    } catch (const RunError&) {
        // The connection is gone, and the transaction with it; who uses it next is told.
    }
}

std::vector<PostgresStatement> PostgresSession::takeAnnouncements() {
    std::vector<PostgresStatement> statements;
    for (const QString& news : std::exchange(m_toAnnounce, {}))
        statements.push_back(
            {QStringLiteral("SELECT pg_notify($1, $2)"), {Variant(m_channel), Variant(news)}});
    return statements;
}

void PostgresSession::announce(const QString& news) {
    m_toAnnounce << news;
    if (m_depth == 0)
        send(takeAnnouncements());
}

// What was heard for somebody else is not for this one.
void PostgresSession::setListener(const Database* owner,
                                  std::function<void(const QStringList&)> callback) {
    const bool wasListening = m_notifier != nullptr;
    m_notifier.reset();
    m_heard.clear();
    m_listens = callback ? owner : nullptr;
    m_listener = std::move(callback);
    if (m_listener)
        listen();
    else if (wasListening && !m_connection.lost())
        send({{QStringLiteral("UNLISTEN *"), {}}}); // else it would pile up unread
}

void PostgresSession::listen() {
    send({{QStringLiteral("LISTEN \"%1\"").arg(m_channel), {}}});
    m_notifier = std::make_unique<QSocketNotifier>(m_connection.socket(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [this] {
        hear();
        tell();
    });
}

void PostgresSession::setProgress(const Database* owner, std::function<void()> callback) {
    m_progresses = callback ? owner : nullptr;
    m_connection.setProgress(std::move(callback));
}

// The session outlives its files, and what they call back.
void PostgresSession::endCallbacksOf(const Database* owner) noexcept {
    if (m_progresses == owner)
        setProgress(nullptr, {});
    if (m_listens != owner)
        return;
    try {
        setListener(nullptr, {});
    } catch (const RunError&) {
        // The connection is gone, and nothing is heard any more.
    }
}

// What comes between the answers to a command is told once the command is over.
void PostgresSession::hear() {
    const qsizetype before = m_heard.size();
    for (const PostgresNotification& news : m_connection.takeNotifications()) {
        if (!news.isOwn)
            m_heard << news.text;
    }
    if (m_notifier && before == 0 && !m_heard.isEmpty())
        QMetaObject::invokeMethod(
            m_notifier.get(), [this] { tell(); }, Qt::QueuedConnection);
    if (m_notifier && m_connection.lost() && m_notifier->isEnabled()) {
        m_notifier->setEnabled(false); // readable for ever
        QMetaObject::invokeMethod(
            m_notifier.get(), [this] { m_listener({}); }, Qt::QueuedConnection);
    }
}

void PostgresSession::tell() {
    if (const QStringList news = std::exchange(m_heard, {}); !news.isEmpty() && m_listener)
        m_listener(news);
}

} // namespace tallyroom
