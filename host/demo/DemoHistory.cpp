#include "host/demo/DemoHistory.h"

#include "host/demo/TableLoader.h"

#include <algorithm>
#include <array>

namespace tallyroom::host {

namespace {

constexpr int minutesOfDay = 1440;
constexpr int laterThanSecondHour = 120; // overtime beyond it is paid double

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
    Accepted,
    Accepted2,
    Declined,
    Declined2,
    Notes,
    ColumnCount
};

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
        : m_rows(database, u"TimeHistory"),
          m_texts(settings.end.addDays(1 - settings.days), settings.days), m_random(random) {}

    void write(const DemoPerson& person) {
        for (const auto& [day, text] : m_texts.days())
            writeDay(person, day, text);
    }

private:
    bool perMille(int share) { return m_random.bounded(1000) < share; }

    void insert(const HistoryRow& row) { m_rows.insert(row.data(), row.size()); }

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
    int kind; // 0 accepted, 1 declined, 2 and 3 the same at double time
    int minutes;
};

constexpr Column answerColumns[] = {Accepted, Declined, Accepted2, Declined2};
constexpr const char* answerFields[] = {"tlyrAccepted", "tlyrDeclined", "tlyrAccepted2",
                                        "tlyrDeclined2"};

DemoAnswer makeAnswer(const DemoPerson& person, const DemoSettings& settings,
                      QRandomGenerator& random) {
    DemoAnswer answer;
    answer.person = &person;
    answer.day = settings.end.addDays(-random.bounded(std::min(settings.days, 42)));
    answer.recorded =
        QDateTime(answer.day.addDays(-1), QTime(8, 0)).addSecs(random.bounded(8 * 3600));
    answer.user = random.bounded(3) == 0 ? "kowalski" : "jmartin";
    const int share = random.bounded(100);
    answer.kind = share < 45 ? 0 : share < 80 ? 1 : share < 90 ? 2 : 3;
    answer.minutes = 60 * (1 + random.bounded(8));
    return answer;
}

void insertAnswer(TableLoader& history, TableLoader& audit, const DemoAnswer& answer) {
    const std::string day = dayText(answer.day);
    HistoryRow row = rowOf(*answer.person, day, "AR");
    row[Start] = timeText(answer.minutes);
    row[Stop] = timeText(0);
    row[AttendCode] = demoAnswerCodes()[static_cast<std::size_t>(answer.kind)];
    row[answerColumns[answer.kind]] = answer.minutes;
    row[Notes] = "";
    history.insert(row.data(), row.size());
    audit.insert({momentText(answer.recorded), answer.user, answer.person->code, day,
                  answer.kind % 2, answer.minutes, answerFields[answer.kind]});
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
    TableLoader history(hostFile, u"TimeHistory");
    TableLoader audit(addInFile, u"TLYR_Audit");
    for (const DemoAnswer& answer : answers)
        insertAnswer(history, audit, answer);
}

} // namespace tallyroom::host
