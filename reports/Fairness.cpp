#include "reports/Fairness.h"

#include "board/BoardTable.h"
#include "common/Counted.h"
#include "common/TextOrder.h"
#include "common/Units.h"
#include "reports/Group.h"
#include "reports/Spread.h"
#include "reports/WeeklyTotals.h"
#include "store/Workspace.h"

#include <algorithm>
#include <cmath>

namespace tallyroom {

namespace {

constexpr int weeksBefore = 12;

struct Person {
    QString code;
    QString name;
    QString department; // codes
    QString shift;
    QString classification; // the default qualification
    std::int32_t worked = 0;
    std::int32_t accepted = 0;
    std::int32_t declined = 0;
    std::int32_t total = 0;
};

QString employeeText(const BoardRow& row, std::u16string_view column) {
    const auto& columns = BoardTable::employeeColumns();
    const auto found = std::ranges::find_if(
        columns, [&](const Schema::Column& known) { return column == known.name; });
    return row.employee[static_cast<std::size_t>(found - columns.begin())].textOrEmpty();
}

Person personOf(const BoardRow& row) {
    return {row.code().textOrEmpty(),        employeeText(row, u"emp_name"),
            employeeText(row, u"emp_dept"),  employeeText(row, u"emp_shift"),
            employeeText(row, u"Qual_Code"), row.WorkedOT.value_or(0),
            row.AcceptedOT.value_or(0),      row.DeclinedOT.value_or(0),
            row.TotalOT1.value_or(0)};
}

std::int32_t whole(double minutes) {
    return static_cast<std::int32_t>(std::lround(minutes));
}

QString amount(double minutes) {
    return TimeConversion::toShortText(whole(minutes));
}

QString nameOf(GroupBy part) {
    switch (part) {
    case GroupBy::Department:
        return QStringLiteral("Department");
    case GroupBy::Shift:
        return QStringLiteral("Shift");
    case GroupBy::Classification:
        break;
    }
    return QStringLiteral("Classification");
}

QString partOf(const Person& person, GroupBy part) {
    switch (part) {
    case GroupBy::Department:
        return person.department;
    case GroupBy::Shift:
        return person.shift;
    case GroupBy::Classification:
        break;
    }
    return person.classification;
}

ValueTable peopleTable(const std::vector<Person>& people, const Spread& spread) {
    using enum ValueKind;
    ValueTable table{QStringLiteral("Everybody, who has least first"),
                     {{QStringLiteral("Code")},
                      {QStringLiteral("Name"), Text, true},
                      {QStringLiteral("Department"), Text, true},
                      {QStringLiteral("Worked"), Minutes},
                      {QStringLiteral("Accepted"), Minutes},
                      {QStringLiteral("Declined"), Minutes},
                      {QStringLiteral("Total"), Minutes},
                      {QStringLiteral("Above lowest"), Minutes},
                      {QStringLiteral("From mean"), Minutes}},
                     {}};
    for (const Person& person : people)
        table.rows.push_back({person.code, person.name, person.department, person.worked,
                              person.accepted, person.declined, person.total,
                              whole(person.total - spread.lowest),
                              whole(person.total - spread.mean)});
    return table;
}

ValueTable partsTable(GroupBy by) {
    using enum ValueKind;
    return {QStringLiteral("By ") + nameOf(by).toLower(),
            {{nameOf(by)},
             {QStringLiteral("Name"), Text, true},
             {QStringLiteral("People"), Number},
             {QStringLiteral("Lowest"), Minutes},
             {QStringLiteral("Highest"), Minutes},
             {QStringLiteral("Highest less lowest"), Minutes},
             {QStringLiteral("Standard deviation"), Minutes},
             {QStringLiteral("Mean"), Minutes}},
            {}};
}

// Parts whose codes are the same to the database are one.
struct Part {
    QString code;
    std::vector<double> totals;
};

std::vector<Part> partsOf(const std::vector<Person>& people, GroupBy by) {
    std::vector<Part> parts;
    QHash<QString, std::size_t> places;
    for (const Person& person : people) {
        const QString code = partOf(person, by);
        const QString key = TextOrder::folded(code);
        if (!places.contains(key)) {
            places.insert(key, parts.size());
            parts.push_back({code, {}});
        }
        parts[places.value(key)].totals.push_back(person.total);
    }
    std::ranges::sort(parts, [](const Part& left, const Part& right) {
        return TextOrder::compare(left.code, right.code) < 0;
    });
    return parts;
}

QString lineOf(const Spread& spread, std::size_t people) {
    return counted(static_cast<qint64>(people), u"person", u"people") +
           QStringLiteral(", mean %1, lowest %2, highest %3")
               .arg(amount(spread.mean), amount(spread.lowest), amount(spread.highest));
}

std::vector<double> totalsOf(const std::vector<Person>& people) {
    std::vector<double> totals;
    for (const Person& person : people)
        totals.push_back(person.total);
    return totals;
}

class FairnessWriter {
public:
    FairnessWriter(const QString& dataFolder, const ReportRequest& request)
        : m_request(request), m_host(Workspace::openHostOptions(dataFolder)),
          m_data(readHostData(*m_host)), m_period(periodOf(request.period, *m_host, dataFolder)),
          m_filter(groupFilter(request.group)) {}

    Report write(const ReportProgress& progress) {
        constexpr int steps = 3;
        requireNotCancelled(progress, 0, steps);
        readPeople();
        requireNotCancelled(progress, 1, steps);
        addHeading();
        if (m_people.empty())
            return std::move(m_report);
        addWeeks();
        requireNotCancelled(progress, 2, steps);
        addBars();
        addParts();
        m_report.tables.push_back(peopleTable(m_people, m_spread));
        requireNotCancelled(progress, steps, steps);
        return std::move(m_report);
    }

private:
    void readPeople() {
        const TotallingPeriod totalled{Dates::fromQDate(m_period.from),
                                       Dates::fromQDate(m_period.to)};
        const auto rows = BoardRows::read(
            *m_host, [this] { return m_filter; }, totalled, false);
        for (const BoardRow& row : rows)
            m_people.push_back(personOf(row));
        std::ranges::stable_sort(m_people, {}, &Person::total);
        m_spread = spreadOf(totalsOf(m_people));
    }

    void addHeading() {
        m_report.title = QStringLiteral("Fairness of Overtime");
        m_report.details << QStringLiteral("Totals of %1 to %2")
                                .arg(shownDay(m_period.from), shownDay(m_period.to))
                         << groupDetails(m_request.group, m_data);
        if (m_people.empty()) {
            m_report.notes << QStringLiteral("Nobody belongs to this group: there is nothing to "
                                             "compare.");
            return;
        }
        m_report.details << lineOf(m_spread, m_people.size())
                         << QStringLiteral("Spread: %1 from lowest to highest, standard deviation "
                                           "%2")
                                .arg(amount(m_spread.range()), amount(m_spread.deviation));
    }

    void addWeeks() {
        QStringList codes;
        for (const Person& person : m_people)
            codes << person.code;
        const auto weeks = weeklyTotals(*m_host, m_filter, codes,
                                        std::min(m_period.from, m_period.to), weeksBefore);
        Chart range{
            QStringLiteral(
                "From lowest to highest in each of the %1 weeks before, by their first days")
                .arg(weeksBefore),
            Chart::Kind::Line,
            {}};
        Chart deviation{
            QStringLiteral("Standard deviation in each of these weeks"), Chart::Kind::Line, {}};
        for (const WeeklyTotals& each : weeks) {
            const Spread spread = spreadOf(each.minutes);
            const QString label = shownDay(each.week.from).left(5); // without the year
            range.points.push_back({label, spread.range()});
            deviation.points.push_back({label, spread.deviation});
        }
        m_report.charts.push_back(std::move(range));
        m_report.charts.push_back(std::move(deviation));
    }

    void addBars() {
        Chart bars{QStringLiteral("Total of each"), Chart::Kind::Bars, {}, m_spread.mean};
        for (const Person& person : m_people)
            bars.points.push_back(
                {person.code + u' ' + person.name, static_cast<double>(person.total)});
        m_report.charts.push_back(std::move(bars));
    }

    void addParts() {
        ValueTable table = partsTable(m_request.groupBy);
        for (const Part& part : partsOf(m_people, m_request.groupBy)) {
            const Spread spread = spreadOf(part.totals);
            table.rows.push_back(
                {part.code.isEmpty() ? QStringLiteral("(none)") : part.code,
                 descriptionOf(part.code), static_cast<std::int32_t>(part.totals.size()),
                 whole(spread.lowest), whole(spread.highest), whole(spread.range()),
                 whole(spread.deviation), whole(spread.mean)});
        }
        m_report.tables.push_back(std::move(table));
    }

    // Nothing for a part without one.
    QString descriptionOf(const QString& code) const {
        if (m_request.groupBy == GroupBy::Department)
            return m_data.departments.value(code);
        const auto shift = std::ranges::find(m_data.shifts, code, &Shift::code);
        const bool isShift = m_request.groupBy == GroupBy::Shift && shift != m_data.shifts.end();
        return isShift ? shift->description : QString();
    }

    const ReportRequest& m_request;
    std::shared_ptr<Database> m_host; // bcx.mdb
    HostData m_data;
    Period m_period;
    QString m_filter;
    std::vector<Person> m_people; // who has least first
    Spread m_spread;              // of their totals
    Report m_report;
};

} // namespace

Report fairnessReport(const QString& dataFolder, const ReportRequest& request,
                      const ReportProgress& progress) {
    return FairnessWriter(dataFolder, request).write(progress);
}

} // namespace tallyroom
