// The totals build without the grid, against the same rows from one hand-written statement.
#include "bench/BenchData.h"
#include "bench/Jobs.h"
#include "bench/Measure.h"
#include "bench/PlainBoard.h"
#include "canvass/CanvassTotals.h"

#include <cstdio>
#include <stdexcept>
#include <tuple>

namespace tallyroom::bench {

namespace {

std::optional<TotallingPeriod> twoWeeks() {
    return TotallingPeriod{{lastDay().serial - 13}, lastDay()};
}

class TotalsJob {
public:
    explicit TotalsJob(int employees, std::optional<TotallingPeriod> period)
        : m_folder(keptFolder(employees)), m_period(period), m_host(hostOf(m_folder)),
          m_plain(m_folder) {
        m_state.DataPath = m_folder;
        m_state.openHostOptions();
        m_state.period = period;
    }

    Comparison compare(int rounds) {
        return inTurns(
            rounds, [this] { return build(); }, [this] { return fill(); },
            [this] { requireSame(m_productRows, m_floorRows); });
    }

    double build() {
        const double time = seconds([this] {
            std::ignore =
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
        const double time = seconds([this] { m_plain.write(m_period); });
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
    PlainBoard m_plain;
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
