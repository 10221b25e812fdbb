#include "bench/PlainServer.h"

#include "store/postgres/PostgresSchema.h"

#include <libpq-fe.h>
#include <stdexcept>

namespace tallyroom::bench {

namespace {

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

QString fillStatement(const QString& site, const std::optional<TotallingPeriod>& period) {
    const QString dates = period ? QStringLiteral(" AND shift_date BETWEEN '%1' AND '%2'")
                                       .arg(Dates::toIso(period->from), Dates::toIso(period->to))
                                 : QString();
    return QStringLiteral(R"(
INSERT INTO pg_temp."tlyrTemp" (emp_code, emp_name, sendate, "Seniority", emp_dept, phone,
    emp_shift, defaulttimecalc, "Qual_Code", "T15Hours", "T20Hours", "T15Hours_Mult",
    "T20Hours_Mult", "xT15Accepted", "xT20Accepted", "xT15Declined", "xT20Declined",
    "T15Accepted", "T20Accepted", "T15Declined", "T20Declined", "WorkedOT", "AcceptedOT",
    "DeclinedOT", "TotalOT1", "TotalOT2")
SELECT emp_code, emp_name, sendate, coalesce("Seniority", 0), emp_dept, phone, emp_shift,
    defaulttimecalc, "Qual_Code", w15, w20, round(w15 * 1.5), w20 * 2, a15, a20, d15, d20,
    a15, a20, d15, d20, w15 + w20, coalesce(a15 + a20, 0), coalesce(d15 + d20, 0),
    coalesce(w15 + w20 + a15 + a20 + d15 + d20, 0), coalesce(w15 + w20 + d15 + d20, 0)
FROM %1_bcx."Employee"
LEFT JOIN %1_bcx."Emp_Qualifications" ON "Emp_Code" = emp_code AND "Default" = -1
LEFT JOIN (
    SELECT thist_emp, round(coalesce(sum(t15), 0) * 1440) AS w15,
        round(coalesce(sum(t20), 0) * 1440) AS w20, coalesce(sum("tlyrAccepted"), 0) AS a15,
        coalesce(sum("tlyrAccepted2"), 0) AS a20, coalesce(sum("tlyrDeclined"), 0) AS d15,
        coalesce(sum("tlyrDeclined2"), 0) AS d20
    FROM %1_bcx."TimeHistory"
    WHERE thist_emp IN (SELECT emp_code FROM %1_bcx."Employee")
        AND thist_record_type IN ('TR', 'AR', 'HR')%2
    GROUP BY thist_emp) AS totals ON thist_emp = emp_code
ORDER BY emp_code)")
        .arg(site, dates);
}

} // namespace

const QString comparedColumns = QStringLiteral(
    "emp_code, emp_name, \"Qual_Code\", \"T15Hours\", \"T20Hours\", \"T15Hours_Mult\", "
    "\"T20Hours_Mult\", \"T15Accepted\", \"T20Accepted\", \"T15Declined\", \"T20Declined\", "
    "\"WorkedOT\", \"AcceptedOT\", \"DeclinedOT\", \"TotalOT1\", \"TotalOT2\"");

PlainServer::PlainServer(const QString& conninfo)
    : m_connection(PQconnectdb((conninfo + QStringLiteral(" options='-c jit=off'")).toUtf8()),
                   PQfinish) {
    if (PQstatus(m_connection.get()) != CONNECTION_OK)
        throw std::runtime_error(PQerrorMessage(m_connection.get()));
}

std::vector<QStringList> PlainServer::cells(const QString& sql) {
    const Result result(PQexec(m_connection.get(), sql.toUtf8()), PQclear);
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        throw std::runtime_error(PQerrorMessage(m_connection.get()));
    std::vector<QStringList> rows(static_cast<std::size_t>(PQntuples(result.get())));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (int column = 0; column < PQnfields(result.get()); ++column)
            rows[row] << QString::fromUtf8(PQgetvalue(result.get(), static_cast<int>(row), column));
    }
    return rows;
}

void PlainServer::run(const QString& statements) {
    cells(statements);
}

QStringList PlainServer::rows(const QString& sql) {
    QStringList result;
    for (const QStringList& row : cells(sql))
        result << row.join(u'|');
    return result;
}

void PlainServer::prepare(const char* name, const QString& sql) {
    const Result result(PQprepare(m_connection.get(), name, sql.toUtf8(), 0, nullptr), PQclear);
    if (PQresultStatus(result.get()) != PGRES_COMMAND_OK)
        throw std::runtime_error(PQerrorMessage(m_connection.get()));
}

void PlainServer::runPrepared(const char* name, const QStringList& parameters) {
    std::vector<QByteArray> texts;
    std::vector<const char*> values;
    for (const QString& parameter : parameters)
        texts.push_back(parameter.toUtf8());
    for (const QByteArray& text : texts)
        values.push_back(text.constData());
    const Result result(PQexecPrepared(m_connection.get(), name, static_cast<int>(values.size()),
                                       values.data(), nullptr, nullptr, 0),
                        PQclear);
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        throw std::runtime_error(PQerrorMessage(m_connection.get()));
}

PlainServerBoard::PlainServerBoard(const QString& conninfo, const QString& site)
    : m_connection(conninfo), m_site(site) {
    for (const QString& statement : createOwnTableStatements())
        m_connection.run(statement);
}

void PlainServerBoard::write(const std::optional<TotallingPeriod>& period) {
    m_connection.run(QStringLiteral("BEGIN; TRUNCATE pg_temp.\"tlyrTemp\""));
    m_connection.run(fillStatement(m_site, period));
    m_connection.run(QStringLiteral("COMMIT"));
}

std::vector<QStringList> PlainServerBoard::sortedRows() {
    return m_connection.cells(QStringLiteral(
        "SELECT emp_code, emp_name, emp_dept, \"Qual_Code\", phone, altphone, cellphone, pager, "
        "sendate, \"Seniority\", \"T15Hours\", \"T20Hours\", \"T15Accepted\", \"T20Accepted\", "
        "\"T15Declined\", \"T20Declined\", \"TotalOT1\" FROM pg_temp.\"tlyrTemp\" "
        "ORDER BY \"TotalOT1\" NULLS FIRST, sendate NULLS FIRST, tr_key"));
}

} // namespace tallyroom::bench
