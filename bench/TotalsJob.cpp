// The totals build without the grid, against the same rows from one hand-written statement.
#include "bench/BenchData.h"
#include "bench/Jobs.h"
#include "bench/Measure.h"
#include "bench/Plain.h"
#include "canvass/CanvassTotals.h"

#include <cstdio>
#include <stdexcept>

namespace tallyroom::bench {

namespace {

std::optional<TotallingPeriod> twoWeeks() {
    return TotallingPeriod{{lastDay().serial - 13}, lastDay()};
}

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

class TotalsJob {
public:
    explicit TotalsJob(int employees, std::optional<TotallingPeriod> period)
        : m_folder(keptFolder(employees)), m_period(period), m_host(hostOf(m_folder)),
          m_plain(fileIn(m_folder, "bcx.mdb")) {
        m_state.DataPath = m_folder;
        m_state.HostOptionsDb = Workspace::openDatabase(fileIn(m_folder, "bcx.mdb"));
        m_state.period = period;
        m_plain.run("ATTACH '" + fileIn(m_folder, "vrlxdb01.mdb").toStdString() + "' AS target");
        m_plain.run("PRAGMA target.synchronous = FULL");
    }

    Comparison compare(int rounds) {
        return inTurns(
            rounds, [this] { return build(); }, [this] { return fill(); },
            [this] { requireSame(m_productRows, m_floorRows); });
    }

    double build() {
        const double time = seconds([this] {
            CanvassTotals::build(m_state, m_host.BucketForm, false, [](const RunError& error) {
                throw std::runtime_error(error.description().toStdString());
                return ErrorAnswer::Abort;
            });
        });
        m_productRows = rows();
        return time;
    }

private:
    double fill() {
        const double time = seconds([this] {
            m_plain.run("BEGIN IMMEDIATE");
            m_plain.run("DELETE FROM target.tlyrTemp");
            m_plain.run(fillStatement(m_period));
            m_plain.run("COMMIT");
        });
        m_floorRows = rows();
        return time;
    }

    QStringList rows() const {
        return rowsOf(fileIn(m_folder, "vrlxdb01.mdb"), "SELECT * FROM tlyrTemp ORDER BY emp_code");
    }

    QString m_folder;
    std::optional<TotallingPeriod> m_period;
    HostContext m_host;
    CanvassState m_state;
    Plain m_plain;
    QStringList m_productRows;
    QStringList m_floorRows;
};

} // namespace

void totalsOfTwoWeeks() {
    printRow("1 totals of 5,000 employees over 14 days", TotalsJob(5000, twoWeeks()).compare(9),
             1.5);
}

void totalsOfAllDates() {
    printRow("2 the same over all 5.2 million history rows", TotalsJob(5000, {}).compare(5), 1.2);
}

void growthOfTotals() {
    std::puts(
        "\ngrowth of the totals build        14 days   us/employee    all dates   us/employee");
    for (const int employees : {625, 1250, 2500, 5000}) {
        const Comparison period = TotalsJob(employees, twoWeeks()).compare(5);
        const Comparison all = TotalsJob(employees, {}).compare(3);
        std::printf("%5d employees, x%d %17.1f ms %12.1f %9.1f ms %13.1f\n", employees,
                    employees / 625, period.product * 1e3, period.product * 1e6 / employees,
                    all.product * 1e3, all.product * 1e6 / employees);
    }
}

} // namespace tallyroom::bench
