#include "reports/Fairness.h"
#include "tests/support/DataFolder.h"

#include <QRandomGenerator>
#include <cmath>
#include <map>

using namespace tallyroom;
using namespace Qt::Literals::StringLiterals;

namespace {

const Period period{{2024, 3, 1}, {2024, 3, 14}};

struct Recorded {
    QString code;
    QDate day;
    QString type;
    int worked;
    int accepted;
    int declined;
};

// The figures as somebody would add them up by hand.
using Totals = std::map<QString, Recorded>;

Totals addedUp(const std::vector<Recorded>& all, const Period& days, const QStringList& codes) {
    Totals totals;
    for (const QString& code : codes)
        totals[code] = {code, {}, {}, 0, 0, 0};
    for (const Recorded& each : all) {
        if (each.type == u"PR" || each.day < days.from || each.day > days.to ||
            !totals.contains(each.code))
            continue;
        totals[each.code].worked += each.worked;
        totals[each.code].accepted += each.accepted;
        totals[each.code].declined += each.declined;
    }
    return totals;
}

int total(const Recorded& each) {
    return each.worked + each.accepted + each.declined;
}

struct Figures {
    int lowest = 1 << 30;
    int highest = 0;
    double sum = 0;
    double squares = 0;
    int people = 0;
    void add(int minutes) {
        lowest = std::min(lowest, minutes);
        highest = std::max(highest, minutes);
        sum += minutes;
        squares += static_cast<double>(minutes) * minutes;
        ++people;
    }
    double mean() const { return sum / people; }
    double deviation() const { return std::sqrt(squares / people - mean() * mean()); }
};

Figures figuresOf(const Totals& totals) {
    Figures figures;
    for (const auto& [code, each] : totals)
        figures.add(total(each));
    return figures;
}

class FairnessTest : public testing::Test {
protected:
    // Departments D0 to D2; E12 has nothing.
    FairnessTest() {
        folder.addHost(12);
        QRandomGenerator random(7);
        for (int n = 0; n < 600; ++n) {
            const int kind = random.bounded(4);
            const int minutes = 15 * (1 + random.bounded(30));
            all.push_back({u"E%1"_s.arg(1 + random.bounded(11)),
                           period.to.addDays(-random.bounded(110)),
                           QStringList{u"TR"_s, u"AR"_s, u"AR"_s, u"PR"_s}[kind],
                           kind == 0 || kind == 3 ? minutes : 0, kind == 1 ? minutes : 0,
                           kind == 2 ? minutes : 0});
        }
        plant();
    }

    void plant() const {
        std::vector<Row> rows;
        for (const Recorded& each : all)
            rows.push_back({each.code, Dates::fromQDate(each.day), each.type, each.worked / 1440.0,
                            each.accepted ? Variant(each.accepted) : Variant::null(),
                            each.declined ? Variant(each.declined) : Variant::null()});
        folder.open(hostFile)->appendRows(u"TimeHistory"_s,
                                          {u"thist_emp"_s, u"shift_date"_s, u"thist_record_type"_s,
                                           u"t15"_s, u"tlyrAccepted2"_s, u"tlyrDeclined"_s},
                                          rows);
    }

    Report report(const ReportGroup& group = {}) const {
        ReportRequest request;
        request.period = period;
        request.group = group;
        return fairnessReport(folder.path(), request, {});
    }

    QStringList codes(const QString& department = {}) const {
        QStringList result;
        for (int n = 1; n <= 12; ++n) {
            if (department.isEmpty() || department == u"D%1"_s.arg(n % 3))
                result << u"E%1"_s.arg(n);
        }
        return result;
    }

    DataFolder folder;
    std::vector<Recorded> all;
};

TEST_F(FairnessTest, ShowsEverybodyWithHisFiguresWhoHasLeastFirst) {
    const Totals expected = addedUp(all, period, codes());
    const Figures figures = figuresOf(expected);
    const Report made = report();
    const std::vector<Row>& rows = made.tables.at(1).rows;
    ASSERT_EQ(rows.size(), 12U);
    EXPECT_EQ(rows[0][0].toText(), u"E12"_s);
    for (std::size_t at = 0; at < rows.size(); ++at) {
        const Recorded& each = expected.at(rows[at][0].toText());
        EXPECT_TRUE(at == 0 || rows[at - 1][6].toLong() <= rows[at][6].toLong());
        EXPECT_EQ(rows[at][3].toLong(), each.worked);
        EXPECT_EQ(rows[at][4].toLong(), each.accepted);
        EXPECT_EQ(rows[at][5].toLong(), each.declined);
        EXPECT_EQ(rows[at][6].toLong(), total(each));
        EXPECT_EQ(rows[at][7].toLong(), total(each) - figures.lowest);
        EXPECT_NEAR(rows[at][8].toDouble(), total(each) - figures.mean(), 0.51);
        EXPECT_EQ(made.charts.at(2).points.at(at).minutes, total(each));
    }
    EXPECT_NEAR(*made.charts[2].mean, figures.mean(), 1e-6);
}

TEST_F(FairnessTest, TellsTheSpreadOfPartsAndOfTheWeeksBefore) {
    const Report made = report();
    ASSERT_EQ(made.tables.at(0).rows.size(), 3U);
    for (const Row& row : made.tables[0].rows) {
        const Figures part = figuresOf(addedUp(all, period, codes(row[0].toText())));
        EXPECT_EQ(row[2].toLong(), part.people);
        EXPECT_EQ(row[3].toLong(), part.lowest);
        EXPECT_EQ(row[4].toLong(), part.highest);
        EXPECT_EQ(row[5].toLong(), part.highest - part.lowest);
        EXPECT_NEAR(row[6].toDouble(), part.deviation(), 0.51);
        EXPECT_NEAR(row[7].toDouble(), part.mean(), 0.51);
    }
    ASSERT_EQ(made.charts.at(0).points.size(), 12U);
    for (int week = 0; week < 12; ++week) {
        const QDate first = period.from.addDays(7 * (week - 12));
        const Figures figures = figuresOf(addedUp(all, {first, first.addDays(6)}, codes()));
        const auto at = static_cast<std::size_t>(week);
        EXPECT_NEAR(made.charts[0].points[at].minutes, figures.highest - figures.lowest, 1e-6);
        EXPECT_NEAR(made.charts[1].points[at].minutes, figures.deviation(), 1e-6);
    }
}

TEST_F(FairnessTest, IsOfTheGroupAloneAndSaysThatThereIsNobody) {
    EXPECT_EQ(report({u"D1"_s, {}, {}}).tables.at(1).rows.size(), 4U);
    const Report empty = report({u"D9"_s, {}, {}});
    EXPECT_TRUE(empty.tables.empty());
    EXPECT_EQ(empty.notes.size(), 1);
    int asked = 0;
    EXPECT_THROW(fairnessReport(folder.path(), {}, [&](int, int) { return ++asked < 3; }),
                 Cancelled);
}

} // namespace
