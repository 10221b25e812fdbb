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

HistoryRow rowOf(const DemoPerson& person, const std::string& day, const char* recordType) {
    HistoryRow row;
    row[Employee] = person.code;
    row[Rule] = person.ruleInForce();
    row[Day] = day;
    row[ShiftDay] = day;
    row[RecordType] = recordType;
    row[Shift] = person.shift->code;
    row[Department] = utf8(person.department);
    return row;
}

bool isHoliday(QDate day) {
    static constexpr int monthAndDay[] = {101, 704, 1111, 1225, 1226};
    return std::ranges::find(monthAndDay, day.month() * 100 + day.day()) != std::end(monthAndDay);
}

Cell fractionOfDay(int minutes) {
    return minutes == 0 ? Cell(nullCell) : Cell(static_cast<double>(minutes) / minutesOfDay);
}

// Texts of days and times, made once instead of for each of millions of rows.
class TextCache {
public:
    TextCache(QDate first, int days) {
        for (int at = 0; at < days; ++at)
            m_days.push_back({first.addDays(at), dayText(first.addDays(at))});
        for (int minutes = 0; minutes < minutesOfDay; ++minutes)
            m_times.push_back(timeText(minutes));
    }

    const std::vector<std::pair<QDate, std::string>>& days() const { return m_days; }
    const std::string& time(int minutes) const {
        return m_times[static_cast<std::size_t>(minutes % minutesOfDay)];
    }

private:
    std::vector<std::pair<QDate, std::string>> m_days;
    std::vector<std::string> m_times;
};

// Writes one employee's days.
class HistoryWriter {
public:
    HistoryWriter(SQLite::Database& database, const DemoSettings& settings,
                  QRandomGenerator& random)
        : m_rows(database, u"TimeHistory", columns),
          m_texts(settings.end.addDays(1 - settings.days), settings.days), m_random(random) {}

    void write(const DemoPerson& person) {
        for (const auto& [day, text] : m_texts.days())
            writeDay(person, day, text);
    }

private:
    bool perMille(int share) { return m_random.bounded(1000) < share; }

    void insert(const HistoryRow& row) { m_rows.insert(row); }

    void writeDay(const DemoPerson& person, QDate day, const std::string& text) {
        if (!person.shift->worksOn(day))
            writeFreeDay(person, day, text);
        else if (isHoliday(day))
            writeAbsence(person, text, "HR", "HOL");
        else if (perMille(55))
            writeAbsence(person, text, "AR", perMille(350) ? "SICK" : "VAC");
        else
            writeWorkday(person, text);
        if (perMille(12))
            writeOtherRecord(person, text);
    }

    void writeAbsence(const DemoPerson& person, const std::string& day, const char* recordType,
                      const char* code) {
        HistoryRow row = rowOf(person, day, recordType);
        row[Start] = m_texts.time(person.shift->start);
        row[Stop] = m_texts.time(person.shift->start + person.shift->length);
        row[AttendCode] = code;
        insert(row);
    }

    // Mostly whole quarters of an hour; some people stay to the minute.
    int overtimeMinutes() {
        const int quarters = 1 + std::min(m_random.bounded(16), m_random.bounded(16));
        return quarters * 15 + (perMille(200) ? m_random.bounded(14) + 1 : 0);
    }

    void writeWorkday(const DemoPerson& person, const std::string& day) {
        const int overtime = perMille(person.overtimePercent * 10) ? overtimeMinutes() : 0;
        HistoryRow row = rowOf(person, day, "TR");
        if (perMille(40))
            row[Department] = utf8(demoDepartment(m_random));
        row[Start] = m_texts.time(person.shift->start);
        row[Stop] = m_texts.time(person.shift->start + person.shift->length + overtime);
        row[Worked15] = fractionOfDay(std::min(overtime, laterThanSecondHour));
        row[Worked20] = fractionOfDay(std::max(0, overtime - laterThanSecondHour));
        insert(row);
    }

    // Whoever likes overtime now and then comes in on a free day: Sundays are paid double.
    void writeFreeDay(const DemoPerson& person, QDate day, const std::string& text) {
        if (!perMille(person.overtimePercent * 2))
            return;
        const int minutes = 240 + 60 * m_random.bounded(5);
        HistoryRow row = rowOf(person, text, "TR");
        row[Start] = m_texts.time(person.shift->start);
        row[Stop] = m_texts.time(person.shift->start + minutes);
        row[day.dayOfWeek() == Qt::Sunday ? Worked20 : Worked15] = fractionOfDay(minutes);
        insert(row);
    }

    // Pay adjustments carry overtime that the host has already counted elsewhere.
    void writeOtherRecord(const DemoPerson& person, const std::string& day) {
        HistoryRow row = rowOf(person, day, "PR");
        row[Worked15] = fractionOfDay(30);
        row[Notes] = "Pay adjustment";
        insert(row);
    }

    TableLoader m_rows;
    TextCache m_texts;
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
    const std::string day = dayText(answer.day);
    HistoryRow row = rowOf(*answer.person, day, "AR");
    row[Start] = timeText(answer.minutes);
    row[Stop] = timeText(0);
    const auto kind = static_cast<std::size_t>(answer.kind - answerKinds);
    row[AttendCode] = demoAnswerCodes()[kind];
    row[FirstAnswer + kind] = answer.minutes;
    row[Notes] = "";
    history.insert(row);
    audit.insert({momentText(answer.recorded), answer.user, answer.person->code, day,
                  static_cast<int>(answer.kind->action), answer.minutes,
                  utf8(QString::fromUtf16(answer.kind->history))});
}

} // namespace

void loadHistory(SQLite::Database& database, const std::vector<DemoPerson>& people,
                 const DemoSettings& settings, QRandomGenerator& random,
                 const LoadProgress& progress) {
    HistoryWriter writer(database, settings, random);
    int done = 0;
    for (const DemoPerson& person : people) {
        writer.write(person);
        if (++done % 50 == 0)
            progress(done);
    }
}

void loadAnswers(SQLite::Database& hostFile, SQLite::Database& addInFile,
                 const std::vector<DemoPerson>& people, const DemoSettings& settings,
                 QRandomGenerator& random) {
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
}

} // namespace tallyroom::host
