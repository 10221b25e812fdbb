#include "store/postgres/PostgresConnection.h"

#include "store/ErrorSource.h"
#include "store/postgres/PostgresErrors.h"

#include <QElapsedTimer>
#include <QTimeZone>
#include <algorithm>
#include <libpq-fe.h>
#include <poll.h>
#include <sys/socket.h>
#include <utility>

namespace tallyroom {

namespace {

constexpr int oldestServer = 150000;  // as libpq counts versions
constexpr int quickAnswer = 2000;     // milliseconds
constexpr int progressInterval = 100; // milliseconds
constexpr std::size_t maximumParameters = 65535;
constexpr qsizetype maximumCopyPiece = 1 << 20; // bytes
// Statements with long lists of codes are not likely to come again.
constexpr qsizetype maximumStatements = 64;
constexpr qsizetype maximumKeptLength = 8192;

// Whatever the server, the database or the user have as defaults, values are read and names are
// found in one way only.
constexpr std::pair<const char*, const char*> settings[] = {{"lock_timeout", "2s"},
                                                            {"DateStyle", "ISO"},
                                                            {"jit", "off"},
                                                            {"standard_conforming_strings", "on"},
                                                            {"bytea_output", "hex"},
                                                            {"search_path", "pg_catalog,pg_temp"},
                                                            {"extra_float_digits", "1"}};

QByteArray setting(const QByteArray& name, const QByteArray& value) {
    return "pg_catalog.set_config('" + name + "', '" + value + "', false)";
}

QByteArray allSettings() {
    QByteArrayList calls;
    for (const auto& [name, value] : settings)
        calls << setting(name, value);
    const QByteArray zone = QTimeZone::systemTimeZoneId();
    if (QTimeZone::isTimeZoneIdAvailable(zone))
        calls << setting("TimeZone", zone);
    return "SELECT " + calls.join(", ");
}

// The address may change what stands before it here, but not what stands behind it. A network that
// is cut shows after half a minute at the most, sent data after fifteen seconds.
std::shared_ptr<pg_conn> openSession(const QByteArray& conninfo) {
    const char* const keywords[] = {"connect_timeout",
                                    "application_name",
                                    "keepalives_idle",
                                    "keepalives_interval",
                                    "keepalives_count",
                                    "tcp_user_timeout",
                                    "dbname",
                                    "client_encoding",
                                    nullptr};
    const char* const values[] = {"10",    "tallyroom",          "10",   "5",    "3",
                                  "15000", conninfo.constData(), "UTF8", nullptr};
    constexpr int isConninfo = 1; // what stands for dbname
    return {PQconnectdbParams(keywords, values, isConninfo), PQfinish};
}

bool isDone(const pg_result* result) {
    const ExecStatusType status = PQresultStatus(result);
    return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

bool isReady(pg_conn* connection, short events, int timeout) {
    pollfd socket{PQsocket(connection), events, 0};
    return poll(&socket, 1, timeout) != 0;
}

// A prepared statement gives columns that are no longer those of its tables.
bool hasOutdatedPlan(const pg_result* result) {
    return qstrcmp(PQresultErrorField(result, PG_DIAG_SQLSTATE), "0A000") == 0;
}

} // namespace

PostgresConnection::PostgresConnection(const QString& conninfo, const QString& name,
                                       std::chrono::milliseconds patience)
    : m_name(name), m_patience(patience) {
    QElapsedTimer timer;
    timer.start();
    m_connection = openSession(conninfo.toUtf8());
    if (PQstatus(m_connection.get()) != CONNECTION_OK)
        throw openingError(m_connection.get(), name, timer.elapsed() < quickAnswer);
    if (PQserverVersion(m_connection.get()) < oldestServer)
        throw RunError::make(
            ErrorNumber::connectionFailed,
            {name,
             QStringLiteral("the server is older than PostgreSQL 15, the first one served.")});
    PQsetNoticeProcessor(
        m_connection.get(), [](void*, const char*) {}, nullptr);
    PQsetnonblocking(m_connection.get(), 1);
    sendSettings();
}

// Poolers refuse them in the packet that opens the session. They are not waited for: the server
// answers them with the first round trip, but ends them before, so that no failure undoes them.
void PostgresConnection::sendSettings() {
    m_queued.push_back({Purpose::Settings, {}});
    if (PQenterPipelineMode(m_connection.get()) == 0 ||
        PQsendQueryParams(m_connection.get(), allSettings().constData(), 0, nullptr, nullptr,
                          nullptr, nullptr, 0) == 0 ||
        !endRoundTrip())
        lose();
}

bool PostgresConnection::endRoundTrip() {
    ++m_endsDue;
    return PQpipelineSync(m_connection.get()) == 1;
}

PostgresResult PostgresConnection::run(const QString& native,
                                       const PostgresParameters& parameters) {
    return runAll({{native, parameters}}).front();
}

std::vector<PostgresResult>
PostgresConnection::runAll(const std::vector<PostgresStatement>& statements) {
    requireConnection();
    for (const PostgresStatement& statement : statements) {
        if (statement.parameters.size() > maximumParameters)
            throw RunError::make(ErrorNumber::tooComplex);
    }
    ++m_roundTrips;
    PQenterPipelineMode(m_connection.get());
    // Half of them may have been sent: without the end of the round trip the server does none.
    const bool isSent =
        std::ranges::all_of(statements, [&](const auto& each) { return queue(each); }) &&
        endRoundTrip();
    if (!isSent)
        lose();
    const auto results = collect();
    PQexitPipelineMode(m_connection.get());
    return answersOf(results);
}

// Without types: the statement names them.
bool PostgresConnection::queue(const PostgresStatement& statement) {
    std::vector<const char*> values;
    values.reserve(statement.parameters.size());
    for (const PostgresParameter& parameter : statement.parameters)
        values.push_back(parameter.native());
    const int count = static_cast<int>(values.size());
    const bool isKept = statement.native.size() <= maximumKeptLength;
    if (isKept && !prepare(statement.native))
        return false;
    m_queued.push_back({Purpose::Answer, statement.native});
    if (!isKept)
        return PQsendQueryParams(m_connection.get(), statement.native.toUtf8().constData(), count,
                                 nullptr, values.data(), nullptr, nullptr, 0) == 1;
    return PQsendQueryPrepared(m_connection.get(), m_statements[statement.native].constData(),
                               count, values.data(), nullptr, nullptr, 0) == 1;
}

bool PostgresConnection::prepare(const QString& native) {
    if (m_statements.contains(native))
        return true;
    if (m_statements.size() >= maximumStatements && !forgetStatements())
        return false;
    const QByteArray name = "s" + QByteArray::number(++m_namesGiven);
    m_statements.insert(native, name);
    m_queued.push_back({Purpose::Preparation, native});
    return PQsendPrepare(m_connection.get(), name.constData(), native.toUtf8().constData(), 0,
                         nullptr) == 1;
}

// A transaction that has failed takes nothing but its end: they are kept until then.
bool PostgresConnection::forgetStatements() {
    if (PQtransactionStatus(m_connection.get()) == PQTRANS_INERROR)
        return true;
    m_statements.clear();
    m_queued.push_back({Purpose::Cleaning, {}});
    return PQsendQueryParams(m_connection.get(), "DEALLOCATE ALL", 0, nullptr, nullptr, nullptr,
                             nullptr, 0) == 1;
}

// A result, nothing, a result, nothing … and the end of the round trip, or of the connection.
std::vector<PostgresResult> PostgresConnection::collect() {
    std::vector<PostgresResult> results;
    while (m_endsDue > 0 && PQstatus(m_connection.get()) == CONNECTION_OK) {
        PostgresResult next = nextResult();
        if (PQresultStatus(next.native()) == PGRES_PIPELINE_SYNC)
            --m_endsDue;
        else if (next.native())
            results.push_back(std::move(next));
    }
    return results;
}

PostgresResult PostgresConnection::nextResult() {
    wait(Awaited::Answer);
    return PostgresResult(PQgetResult(m_connection.get()));
}

std::vector<PostgresResult>
PostgresConnection::answersOf(const std::vector<PostgresResult>& results) {
    std::vector<PostgresResult> answers;
    const pg_result* failed = nullptr;
    const std::vector<Queued> queued = std::exchange(m_queued, {});
    for (std::size_t i = 0; i < results.size() && i < queued.size(); ++i) {
        if (!isDone(results[i].native())) {
            noteFailure(queued[i], results[i].native(), failed == nullptr);
            failed = failed ? failed : results[i].native();
        } else if (queued[i].purpose == Purpose::Answer) {
            answers.push_back(results[i]);
        }
    }
    if (failed || results.size() != queued.size())
        fail(failed);
    return answers;
}

// Where one statement is outdated, others are likely to be.
void PostgresConnection::noteFailure(const Queued& queued, const pg_result* failed, bool isFirst) {
    m_isLost = m_isLost || queued.purpose == Purpose::Settings;
    if (isFirst)
        m_isOutdated = hasOutdatedPlan(failed);
    if (m_isOutdated)
        m_statements.clear();
    else if (queued.purpose == Purpose::Preparation)
        m_statements.remove(queued.native);
}

// Statements may take long; a server from which nothing comes for a minute is not thought to be at
// work any more. The network alone does not tell: it takes what a stopped server does not read.
void PostgresConnection::wait(Awaited awaited) {
    pg_conn* connection = m_connection.get();
    QElapsedTimer silence;
    silence.start();
    for (;;) {
        const int unsent = PQflush(connection);
        const bool isOver = awaited == Awaited::Answer ? !PQisBusy(connection) : unsent == 0;
        if (isOver || unsent < 0)
            return; // the next result tells why
        if (isReady(connection, unsent ? POLLIN | POLLOUT : POLLIN, progressInterval)) {
            silence.restart();
            if (!PQconsumeInput(connection))
                return;
        } else if (silence.hasExpired(m_patience.count())) {
            giveUp();
        } else if (m_progress) {
            m_progress();
        }
    }
}

// Whatever the server still reads, it finds the end of the session behind it.
void PostgresConnection::giveUp() {
    shutdown(socket(), SHUT_RDWR);
    lose();
}

// As one text they are one question, which a pipeline could not copy in. What fails ends it.
void PostgresConnection::beginCopy(const QStringList& statements) {
    if (!PQsendQuery(m_connection.get(), statements.join(QStringLiteral("; ")).toUtf8()))
        lose();
    PostgresResult begun = nextResult();
    while (PQresultStatus(begun.native()) == PGRES_COMMAND_OK)
        begun = nextResult();
    if (PQresultStatus(begun.native()) == PGRES_COPY_IN)
        return;
    nextResult();
    fail(begun.native());
}

void PostgresConnection::copyRows(const QString& target, const std::vector<Row>& rows,
                                  const QStringList& before) {
    if (m_endsDue > 0)
        runAll({});
    requireConnection();
    const QByteArray text = copyText(rows);
    m_roundTrips += 2;
    pg_conn* connection = m_connection.get();
    beginCopy(before + QStringList(QStringLiteral("COPY %1 FROM STDIN").arg(target)));
    for (qsizetype at = 0; at < text.size(); at += maximumCopyPiece) {
        const auto piece = std::min(maximumCopyPiece, text.size() - at);
        if (PQputCopyData(connection, text.constData() + at, static_cast<int>(piece)) != 1)
            lose();
        wait(Awaited::Room);
    }
    if (PQputCopyEnd(connection, nullptr) != 1)
        lose();
    const PostgresResult ended = nextResult();
    nextResult(); // nothing, which ends the command
    if (!isDone(ended.native()))
        fail(ended.native());
}

bool PostgresConnection::inTransaction() const {
    const PGTransactionStatusType status = PQtransactionStatus(m_connection.get());
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

int PostgresConnection::socket() const {
    return PQsocket(m_connection.get());
}

std::vector<PostgresNotification> PostgresConnection::takeNotifications() {
    std::vector<PostgresNotification> taken;
    // What the server said last stands before the end of the connection.
    while (!m_isLost && isReady(m_connection.get(), POLLIN, 0))
        m_isLost = PQconsumeInput(m_connection.get()) == 0;
    while (const std::unique_ptr<PGnotify, decltype(&PQfreemem)> next{
        PQnotifies(m_connection.get()), PQfreemem})
        taken.push_back({QString::fromUtf8(next->relname), QString::fromUtf8(next->extra),
                         next->be_pid == PQbackendPID(m_connection.get())});
    return taken;
}

void PostgresConnection::requireConnection() {
    if (m_isLost)
        lose();
}

void PostgresConnection::fail(const pg_result* result) {
    if (PQstatus(m_connection.get()) != CONNECTION_OK || !result || isGoodbye(result))
        lose();
    throw statementError(result, m_name);
}

void PostgresConnection::lose() {
    m_isLost = true;
    throw RunError::make(ErrorNumber::connectionLost);
}

} // namespace tallyroom
