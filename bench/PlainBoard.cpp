#include "bench/PlainBoard.h"

#include "bench/BenchData.h"

namespace tallyroom::bench {

namespace {

// Whole minutes times one and a half, halves to the even number.
std::string timesOneAndAHalf(const std::string& minutes) {
    return "CASE WHEN " + minutes + " % 2 = 0 THEN " + minutes + " * 3 / 2 ELSE 2 * ((3 * " +
           minutes + " + 2) / 4) END";
}

std::string totals(const std::optional<TotallingPeriod>& period) {
    std::string sql = "SELECT thist_emp, CAST(round(total(t15) * 1440) AS INTEGER) AS w15, "
                      "CAST(round(total(t20) * 1440) AS INTEGER) AS w20, "
                      "CAST(total(tlyrAccepted) AS INTEGER) AS a15, "
                      "CAST(total(tlyrAccepted2) AS INTEGER) AS a20, "
                      "CAST(total(tlyrDeclined) AS INTEGER) AS d15, "
                      "CAST(total(tlyrDeclined2) AS INTEGER) AS d20 FROM TimeHistory "
                      "WHERE thist_emp IN (SELECT emp_code FROM Employee) "
                      "AND thist_record_type IN ('TR', 'AR', 'HR')";
    if (period)
        sql += " AND shift_date BETWEEN '" + Dates::toIso(period->from).toStdString() + "' AND '" +
               Dates::toIso(period->to).toStdString() + "'";
    return sql + " GROUP BY thist_emp";
}

std::string fillStatement(const std::optional<TotallingPeriod>& period) {
    return "INSERT INTO target.tlyrTemp (emp_code, emp_name, sendate, Seniority, emp_dept, phone, "
           "emp_shift, defaulttimecalc, Qual_Code, T15Hours, T20Hours, T15Hours_Mult, "
           "T20Hours_Mult, xT15Accepted, xT20Accepted, xT15Declined, xT20Declined, T15Accepted, "
           "T20Accepted, T15Declined, T20Declined, WorkedOT, AcceptedOT, DeclinedOT, TotalOT1, "
           "TotalOT2) SELECT emp_code, emp_name, sendate, coalesce(Seniority, 0), emp_dept, "
           "phone, emp_shift, defaulttimecalc, (SELECT Qual_Code FROM Emp_Qualifications q "
           "WHERE q.Emp_Code = Employee.emp_code AND q.\"Default\" = -1), w15, w20, " +
           timesOneAndAHalf("w15") +
           ", w20 * 2, a15, a20, d15, d20, a15, a20, d15, d20, w15 + w20, "
           "coalesce(a15 + a20, 0), coalesce(d15 + d20, 0), "
           "coalesce(w15 + w20 + a15 + a20 + d15 + d20, 0), coalesce(w15 + w20 + d15 + d20, 0) "
           "FROM Employee LEFT JOIN (" +
           totals(period) + ") ON thist_emp = emp_code ORDER BY emp_code";
}

} // namespace

PlainBoard::PlainBoard(const QString& folder) : m_connection(fileIn(folder, "bcx.mdb")) {
    m_connection.run("ATTACH '" + fileIn(folder, "vrlxdb01.mdb").toStdString() + "' AS target");
    m_connection.run("PRAGMA target.synchronous = EXTRA");
}

void PlainBoard::write(const std::optional<TotallingPeriod>& period) {
    m_connection.run("BEGIN IMMEDIATE");
    m_connection.run("DELETE FROM target.tlyrTemp");
    m_connection.run(fillStatement(period));
    m_connection.run("COMMIT");
}

std::vector<QStringList> sortedRows(const QString& folder) {
    Plain connection(fileIn(folder, "vrlxdb01.mdb"));
    PlainStatement query(
        connection,
        "SELECT emp_code, emp_name, emp_dept, Qual_Code, phone, altphone, cellphone, pager, "
        "sendate, Seniority, T15Hours, T20Hours, T15Accepted, T20Accepted, T15Declined, "
        "T20Declined, TotalOT1 FROM tlyrTemp ORDER BY TotalOT1, sendate");
    std::vector<QStringList> rows;
    while (query.next()) {
        QStringList cells;
        for (int column = 0; column < sqlite3_column_count(query.handle()); ++column)
            cells << query.text(column);
        rows.push_back(std::move(cells));
    }
    return rows;
}

int BareModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int BareModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || m_rows.empty() ? 0 : static_cast<int>(m_rows.front().size());
}

QVariant BareModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    return m_rows[static_cast<std::size_t>(index.row())][index.column()];
}

void BareModel::setRows(std::vector<QStringList> rows) {
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

QStringList BareModel::firstColumn() const {
    QStringList result;
    for (const QStringList& row : m_rows)
        result << row.front();
    return result;
}

} // namespace tallyroom::bench
