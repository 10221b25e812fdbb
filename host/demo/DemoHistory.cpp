#include "host/demo/DemoHistory.h"

#include "common/AnswerKind.h"
#include "host/demo/TableLoader.h"

#include <algorithm>
#include <array>

namespace tallyroom::host {

namespace {

constexpr int minutesOfDay = 1440;
constexpr int laterThanSecondHour = 120; // overtime beyond it is paid double

// The columns of the history, by name and by place in a row.
constexpr const char16_t* columns[] = {
    u"thist_emp",
    u"rule",
    u"thist_date",
    u"shift_date",
    u"thist_record_type",
    u"thist_shift",
    u"thist_dept",
    u"thist_start_time",
    u"thist_stop_time",
    u"thist_attend_code",
    u"t15",
    u"t20",
    answerKinds[0].history,
    answerKinds[1].history,
    answerKinds[2].history,
    answerKinds[3].history,
    u"Notes",
};
enum Column : std::size_t {
    Employee,
    Rule,
    Day,
    ShiftDay,
    RecordType,
    Shift,
    Department,
    Start,
    Stop,
    AttendCode,
    Worked15,
    Worked20,
    FirstAnswer, // the kinds of answer follow each other
    Notes = FirstAnswer + std::size(answerKinds),
    ColumnCount
};
static_assert(std::size(columns) == ColumnCount);

using HistoryRow = std::array<Cell, ColumnCount>;

HistoryRow rowOf(const DemoPerson& person, QDate day, const char* recordType) {
    HistoryRow row;
    row[Employee] = person.code;
    row[Rule] = person.ruleInForce();
    row[Day] = day;
    row[ShiftDay] = day;
    row[RecordType] = recordType;
    row[Shift] = person.shift->code;
    row[Department] = person.department;
    return row;
}

bool isHoliday(QDate day) {
    static constexpr int monthAndDay[] = {101, 704, 1111, 1225, 1226};
    return std::ranges::find(monthAndDay, day.month() * 100 + day.day()) != std::end(monthAndDay);
}

Cell fractionOfDay(int minutes) {
    return minutes == 0 ? Cell() : Cell(static_cast<double>(minutes) / minutesOfDay);
}

// Writes one employee's days.
class HistoryWriter {
public:
    HistoryWriter(Database& database, const DemoSettings& settings, QRandomGenerator& random)
        : m_rows(database, u"TimeHistory", columns),
          m_first(settings.end.addDays(1 - settings.days)), m_days(settings.days),
          m_random(random) {}

    void write(const DemoPerson& person) {
        for (int at = 0; at < m_days; ++at)
            writeDay(person, m_first.addDays(at));
    }

    void finish() { m_rows.finish(); }

private:
    bool perMille(int share) { return m_random.bounded(1000) < share; }

    void insert(const HistoryRow& row) { m_rows.insert(row); }

    void writeDay(const DemoPerson& person, QDate day) {
        if (!person.shift->worksOn(day))
            writeFreeDay(person, day);
        else if (isHoliday(day))
            writeAbsence(person, day, "HR", "HOL");
        else if (perMille(55))
            writeAbsence(person, day, "AR", perMille(350) ? "SICK" : "VAC");
        else
            writeWorkday(person, day);
        if (perMille(12))
            writeOtherRecord(person, day);
    }

    void writeAbsence(const DemoPerson& person, QDate day, const char* recordType,
                      const char* code) {
        HistoryRow row = rowOf(person, day, recordType);
        row[Start] = timeOfDay(person.shift->start);
        row[Stop] = timeOfDay(person.shift->start + person.shift->length);
        row[AttendCode] = code;
        insert(row);
    }

    // Mostly whole quarters of an hour; some people stay to the minute.
    int overtimeMinutes() {
        const int quarters = 1 + std::min(m_random.bounded(16), m_random.bounded(16));
        return quarters * 15 + (perMille(200) ? m_random.bounded(14) + 1 : 0);
    }

    void writeWorkday(const DemoPerson& person, QDate day) {
        const int overtime = perMille(person.overtimePercent * 10) ? overtimeMinutes() : 0;
        HistoryRow row = rowOf(person, day, "TR");
        if (perMille(40))
            row[Department] = demoDepartment(m_random);
        row[Start] = timeOfDay(person.shift->start);
        row[Stop] = timeOfDay(person.shift->start + person.shift->length + overtime);
        row[Worked15] = fractionOfDay(std::min(overtime, laterThanSecondHour));
        row[Worked20] = fractionOfDay(std::max(0, overtime - laterThanSecondHour));
        insert(row);
    }

    // Whoever likes overtime now and then comes in on a free day: Sundays are paid double.
    void writeFreeDay(const DemoPerson& person, QDate day) {
        if (!perMille(person.overtimePercent * 2))
            return;
        const int minutes = 240 + 60 * m_random.bounded(5);
        HistoryRow row = rowOf(person, day, "TR");
        row[Start] = timeOfDay(person.shift->start);
        row[Stop] = timeOfDay(person.shift->start + minutes);
        row[day.dayOfWeek() == Qt::Sunday ? Worked20 : Worked15] = fractionOfDay(minutes);
        insert(row);
    }

    // Pay adjustments carry overtime that the host has already counted elsewhere.
    void writeOtherRecord(const DemoPerson& person, QDate day) {
        HistoryRow row = rowOf(person, day, "PR");
        row[Worked15] = fractionOfDay(30);
        row[Notes] = "Pay adjustment";
        insert(row);
    }

    TableLoader m_rows;
    QDate m_first;
    int m_days;
    QRandomGenerator& m_random;
};

struct DemoAnswer {
    const DemoPerson* person;
    QDate day;
    QDateTime recorded;
    const char* user;
    const AnswerKind* kind;
    int minutes;
};

const AnswerKind& makeKind(QRandomGenerator& random) {
    const int share = random.bounded(100);
    const bool isDouble = share >= 80;
    const bool declined = isDouble ? share >= 90 : share >= 45;
    return answerKind(declined ? AuditAction::Declined : AuditAction::Accepted,
                      isDouble ? Rate::Double : Rate::OneAndAHalf);
}

DemoAnswer makeAnswer(const DemoPerson& person, const DemoSettings& settings,
                      QRandomGenerator& random) {
    DemoAnswer answer;
    answer.person = &person;
    answer.day = settings.end.addDays(-random.bounded(std::min(settings.days, 42)));
    answer.recorded =
        QDateTime(answer.day.addDays(-1), QTime(8, 0)).addSecs(random.bounded(8 * 3600));
    answer.user = random.bounded(3) == 0 ? "kowalski" : "jmartin";
    answer.kind = &makeKind(random);
    answer.minutes = 60 * (1 + random.bounded(8));
    return answer;
}

void insertAnswer(TableLoader& history, TableLoader& audit, const DemoAnswer& answer) {
    const QDate day = answer.day;
    HistoryRow row = rowOf(*answer.person, day, "AR");
    row[Start] = timeOfDay(answer.minutes);
    row[Stop] = timeOfDay(0);
    const auto kind = static_cast<std::size_t>(answer.kind - answerKinds);
    row[AttendCode] = demoAnswerCodes()[kind];
    row[FirstAnswer + kind] = answer.minutes;
    row[Notes] = "";
    history.insert(row);
    audit.insert({answer.recorded, answer.user, answer.person->code, day,
                  static_cast<int>(answer.kind->action), answer.minutes,
                  QString::fromUtf16(answer.kind->history)});
}

} // namespace

void loadHistory(Database& database, const std::vector<DemoPerson>& people,
                 const DemoSettings& settings, QRandomGenerator& random,
                 const LoadProgress& progress) {
    HistoryWriter writer(database, settings, random);
    int done = 0;
    for (const DemoPerson& person : people) {
        writer.write(person);
        if (++done % 50 == 0)
            progress(done);
    }
    writer.finish();
}

void loadAnswers(Database& hostFile, Database& addInFile, const std::vector<DemoPerson>& people,
                 const DemoSettings& settings, QRandomGenerator& random) {
    std::vector<DemoAnswer> answers;
    for (const DemoPerson& person : people) {
        for (int count = random.bounded(4); count > 0; --count)
            answers.push_back(makeAnswer(person, settings, random));
    }
    std::ranges::stable_sort(answers, {}, &DemoAnswer::recorded);
    TableLoader history(hostFile, u"TimeHistory", columns);
    TableLoader audit(addInFile, u"TLYR_Audit",
                      {u"Now", u"User", u"Emp_Code", u"Date", u"Action", u"OT", u"tHistField"});
    for (const DemoAnswer& answer : answers)
        insertAnswer(history, audit, answer);
    history.finish();
    audit.finish();
}

} // namespace tallyroom::host
