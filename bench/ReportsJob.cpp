// Reports over 5,000 employees and a year, against the queries that they need, hand-written and
// with all their rows read.
#include "bench/BenchData.h"
#include "bench/Jobs.h"
#include "bench/Measure.h"
#include "bench/Plain.h"
#include "reports/Reports.h"

#include <set>

namespace tallyroom::bench {

namespace {

constexpr int days = 365;
constexpr int weeks = 12;
constexpr int rounds = 7;
constexpr double target = 2;

QString folder() {
    return keptFolder(5000);
}

QDate lastOfYear() {
    return Dates::dayOf(lastDay());
}

QDate firstOfYear() {
    return lastOfYear().addDays(1 - days);
}

// 'column' within whole days.
std::string within(const char* column, QDate from, QDate to) {
    return (QStringLiteral("%1 BETWEEN '%2 00:00:00' AND '%3 23:59:59'")
                .arg(QString::fromLatin1(column), from.toString(Qt::ISODate),
                     to.toString(Qt::ISODate)))
        .toStdString();
}

void compare(const char* job, ReportKind kind, const std::function<void()>& floor,
             const std::function<void(const Report&)>& agree) {
    ReportRequest request;
    request.kind = kind;
    request.period = Period{firstOfYear(), lastOfYear()};
    Report report;
    const QString data = folder();
    const Comparison times = inTurns(
        rounds, [&] { return seconds([&] { report = Reports::make(data, request); }); },
        [&] { return seconds(floor); }, [&] { agree(report); });
    printRow(job, times, target);
}

// The rows of a query, with all their cells as texts.
std::vector<QStringList> readRows(Plain& connection, const std::string& sql) {
    PlainStatement query(connection, sql);
    std::vector<QStringList> rows;
    while (query.next()) {
        QStringList cells;
        for (int column = 0; column < sqlite3_column_count(query.handle()); ++column)
            cells << query.text(column);
        rows.push_back(std::move(cells));
    }
    return rows;
}

std::string sumOfAll() {
    return "(total(t15) + total(t20)) * 1440 + total(tlyrAccepted) + total(tlyrAccepted2) + "
           "total(tlyrDeclined) + total(tlyrDeclined2)";
}

const std::string ofEmployees = " WHERE thist_emp IN (SELECT emp_code FROM Employee) AND "
                                "thist_record_type IN ('TR', 'AR', 'HR') AND ";

std::string yearStatement() {
    return "SELECT emp_code, emp_name, emp_dept, emp_shift, (SELECT Qual_Code FROM "
           "Emp_Qualifications q WHERE q.Emp_Code = Employee.emp_code AND q.\"Default\" = -1), "
           "worked, accepted, declined, whole FROM Employee LEFT JOIN (SELECT thist_emp, "
           "(total(t15) + total(t20)) * 1440 AS worked, total(tlyrAccepted) + "
           "total(tlyrAccepted2) AS accepted, total(tlyrDeclined) + total(tlyrDeclined2) AS "
           "declined, CAST(round(" +
           sumOfAll() + ") AS INTEGER) AS whole FROM TimeHistory" + ofEmployees +
           within("shift_date", firstOfYear(), lastOfYear()) +
           " GROUP BY thist_emp) ON thist_emp = emp_code ORDER BY emp_code";
}

std::string weeksStatement() {
    const QDate first = firstOfYear().addDays(-7 * weeks);
    return "SELECT thist_emp, CAST((julianday(shift_date) - julianday('" +
           first.toString(Qt::ISODate).toStdString() + "')) / 7 AS INTEGER) AS week, " +
           sumOfAll() + " FROM TimeHistory" + ofEmployees +
           within("shift_date", first, firstOfYear().addDays(-1)) + " GROUP BY thist_emp, week";
}

std::string answersStatement() {
    return "SELECT Now, User, Emp_Code, Date, Action, OT, tHistField FROM TLYR_Audit WHERE " +
           within("Date", firstOfYear(), lastOfYear().addDays(60)) + " ORDER BY Now";
}

std::string historyStatement() {
    return "SELECT thist_emp, shift_date, tlyrAccepted, tlyrAccepted2, tlyrDeclined, tlyrDeclined2 "
           "FROM TimeHistory WHERE " +
           within("shift_date", firstOfYear(), lastOfYear().addDays(60)) +
           " AND (thist_record_type = 'AR' OR tlyrAccepted <> 0 OR tlyrAccepted2 <> 0 OR "
           "tlyrDeclined <> 0 OR tlyrDeclined2 <> 0)";
}

std::string codesStatement() {
    return "SELECT thist_emp, count(*), max(shift_date) FROM TimeHistory WHERE " +
           within("shift_date", firstOfYear(), lastOfYear()) + " GROUP BY thist_emp";
}

QStringList sorted(QStringList lines) {
    lines.sort();
    return lines;
}

// How many answers are for a day of absence.
int answersOnAbsences(const std::vector<QStringList>& answers,
                      const std::vector<QStringList>& history) {
    std::set<QString> absences;
    for (const QStringList& row : history) {
        if (row.mid(2).join(QString()).isEmpty())
            absences.insert(row[0] + row[1]);
    }
    return static_cast<int>(std::ranges::count_if(
        answers, [&](const QStringList& row) { return absences.contains(row[2] + row[3]); }));
}

} // namespace

void fairnessOfAYear() {
    Plain host(fileIn(folder(), "bcx.mdb"));
    std::vector<QStringList> year;
    std::vector<QStringList> weekly;
    compare(
        "7 fairness of 5,000 employees over a year", ReportKind::Fairness,
        [&] {
            year = readRows(host, yearStatement());
            weekly = readRows(host, weeksStatement());
        },
        [&](const Report& report) {
            QStringList product;
            for (const Row& row : report.tables.back().rows)
                product << row[0].toText() + u' ' + row[6].toText();
            QStringList floor;
            for (const QStringList& row : year)
                floor << row[0] + u' ' + (row[8].isEmpty() ? QStringLiteral("0") : row[8]);
            requireSame(sorted(product), sorted(floor));
        });
}

void checksOfAYear() {
    Plain host(fileIn(folder(), "bcx.mdb"));
    Plain addIn(fileIn(folder(), "aidb01.mdb"));
    std::vector<QStringList> answers;
    std::vector<QStringList> history;
    compare(
        "7 checks of 5,000 employees over a year", ReportKind::Checks,
        [&] {
            answers = readRows(addIn, answersStatement());
            history = readRows(host, historyStatement());
            readRows(host, codesStatement());
        },
        [&](const Report& report) {
            const QString caption = QStringLiteral("Answers for a day of absence: %1");
            QStringList product;
            for (const ValueTable& table : report.tables) {
                if (table.caption.startsWith(caption.chopped(2)))
                    product << table.caption;
            }
            requireSame(product, {caption.arg(answersOnAbsences(answers, history))});
        });
}

} // namespace tallyroom::bench
