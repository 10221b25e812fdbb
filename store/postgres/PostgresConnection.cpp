#include "store/postgres/PostgresConnection.h"

#include "store/ErrorSource.h"
#include "store/postgres/PostgresErrors.h"

#include <QElapsedTimer>
#include <QTimeZone>
#include <algorithm>
#include <libpq-fe.h>
#include <poll.h>

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

// What is asked of the session besides.
QByteArray givenOptions(const QByteArray& conninfo) {
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> all(
        PQconninfoParse(conninfo.constData(), nullptr), PQconninfoFree);
    for (const auto* option = all.get(); option && option->keyword; ++option) {
        if (qstrcmp(option->keyword, "options") == 0)
            return option->val;
    }
    return {};
}

// In the packet that opens the session, so that they cost no round trip. Whatever the server, the
// database or the user have as defaults, values are read and names are found in one way only.
QByteArray sessionOptions() {
    const QByteArray zone = QTimeZone::systemTimeZoneId();
    return QByteArray(" -c lock_timeout=2s -c DateStyle=ISO -c extra_float_digits=1"
                      " -c standard_conforming_strings=on -c bytea_output=hex"
                      " -c search_path=pg_catalog,pg_temp -c jit=off") +
           (QTimeZone::isTimeZoneIdAvailable(zone) ? " -c TimeZone=" + zone : QByteArray());
}

// The address may change what stands before it here, but not what stands behind it. A network that
// is cut shows after half a minute at the most, sent data after fifteen seconds.
std::shared_ptr<pg_conn> openSession(const QByteArray& conninfo) {
    const QByteArray options = givenOptions(conninfo) + sessionOptions();
    const char* const keywords[] = {"connect_timeout",  "application_name",
                                    "keepalives_idle",  "keepalives_interval",
                                    "keepalives_count", "tcp_user_timeout",
                                    "dbname",           "client_encoding",
                                    "options",          nullptr};
    const char* const values[] = {
        "10",   "tallyroom",         "10",   "5", "3", "15000", conninfo.constData(),
        "UTF8", options.constData(), nullptr};
    constexpr int isConninfo = 1; // what stands for dbname
    return {PQconnectdbParams(keywords, values, isConninfo), PQfinish};
}

bool isDone(const pg_result* result) {
    const ExecStatusType status = PQresultStatus(result);
    return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

bool isReadable(pg_conn* connection, int timeout) {
    pollfd input{PQsocket(connection), POLLIN, 0};
    return poll(&input, 1, timeout) != 0;
}

// A prepared statement gives columns that are no longer those of its tables.
bool isOutdated(const pg_result* result) {
    return qstrcmp(PQresultErrorField(result, PG_DIAG_SQLSTATE), "0A000") == 0;
}

} // namespace

PostgresConnection::PostgresConnection(const QString& conninfo, const QString& name)
    : m_name(name) {
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
    m_queued.clear();
    PQenterPipelineMode(m_connection.get());
    // Half of them may have been sent: without the end of the round trip the server does none.
    const bool isSent =
        std::ranges::all_of(statements, [&](const auto& each) { return queue(each); }) &&
        PQpipelineSync(m_connection.get()) == 1;
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
    while (PQstatus(m_connection.get()) == CONNECTION_OK) {
        waitForInput();
        pg_result* next = PQgetResult(m_connection.get());
        if (!next)
            continue;
        results.emplace_back(next);
        if (PQresultStatus(next) == PGRES_PIPELINE_SYNC) {
            results.pop_back();
            break;
        }
    }
    return results;
}

std::vector<PostgresResult>
PostgresConnection::answersOf(const std::vector<PostgresResult>& results) {
    std::vector<PostgresResult> answers;
    const pg_result* failed = nullptr;
    for (std::size_t i = 0; i < results.size() && i < m_queued.size(); ++i) {
        if (!isDone(results[i].native())) {
            failed = failed ? failed : results[i].native();
            forgetUnprepared(m_queued[i], results[i].native());
        } else if (m_queued[i].purpose == Purpose::Answer) {
            answers.push_back(results[i]);
        }
    }
    if (failed || results.size() != m_queued.size())
        fail(failed);
    return answers;
}

void PostgresConnection::forgetUnprepared(const Queued& queued, const pg_result* failed) {
    if (queued.purpose == Purpose::Preparation || isOutdated(failed))
        m_statements.remove(queued.native);
}

void PostgresConnection::waitForInput() {
    while (m_progress && PQisBusy(m_connection.get())) {
        if (!isReadable(m_connection.get(), progressInterval))
            m_progress();
        else if (PQconsumeInput(m_connection.get()) == 0)
            return; // the next result tells why
    }
}

void PostgresConnection::copyRows(const QString& target, const std::vector<Row>& rows) {
    requireConnection();
    const QByteArray text = copyText(rows);
    m_roundTrips += 2;
    pg_conn* connection = m_connection.get();
    const QByteArray command = QStringLiteral("COPY %1 FROM STDIN").arg(target).toUtf8();
    const PostgresResult begun(PQexec(connection, command.constData()));
    if (PQresultStatus(begun.native()) != PGRES_COPY_IN)
        fail(begun.native());
    for (qsizetype at = 0; at < text.size(); at += maximumCopyPiece) {
        const auto piece = std::min(maximumCopyPiece, text.size() - at);
        if (PQputCopyData(connection, text.constData() + at, static_cast<int>(piece)) != 1)
            lose();
    }
    if (PQputCopyEnd(connection, nullptr) != 1)
        lose();
    const PostgresResult ended(PQgetResult(connection));
    PQclear(PQgetResult(connection)); // nothing, which ends the command
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
    while (!m_isLost && isReadable(m_connection.get(), 0))
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
