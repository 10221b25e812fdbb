#include "host/demo/DemoPeople.h"

#include "host/demo/TableLoader.h"

#include <algorithm>
#include <numeric>

namespace tallyroom::host {

namespace {

struct CodeAndText {
    const char* code;
    const char* text;
};

constexpr int mondayToFriday = 0b0011111;
constexpr int fridayToMonday = 0b1110001;
constexpr DemoShift shifts[] = {
    {"DAY", "1", "Day", 7 * 60, 510, mondayToFriday},
    {"AFT", "2", "Afternoon", 15 * 60, 510, mondayToFriday},
    {"NGT", "3", "Night", 23 * 60, 510, mondayToFriday},
    {"WKD", "4", "Weekend, twelve hours", 6 * 60, 720, fridayToMonday},
};

constexpr CodeAndText departments[] = {
    {"ASSY", "Assembly"},          {"MACH", "Machining"},
    {"MAINT", "Maintenance"},      {"PAINT", "Paint"},
    {"QUAL", "Quality"},           {"SHIP", "Shipping"},
    {"TOOL", "Tool and die room"}, {"WHSE", "Warehouse"},
};

constexpr const char* qualifications[] = {"ELECTR",   "FIRSTAID", "FORKLIFT", "INSPECT",
                                          "LEADHAND", "PACKER",   "PRESSOP",  "WELDER"};

constexpr const char* answerCodes[] = {"OTACC15", "OTACC20", "OTDEC15", "OTDEC20"};

constexpr CodeAndText absences[] = {
    {"BEREAVE", "Bereavement"},
    {"HOL", "Holiday"},
    {"JURY", "Jury duty"},
    {"LATE", "Late arrival"},
    {"OTACC15", "Overtime accepted at 1.5"},
    {"OTACC20", "Overtime accepted at 2.0"},
    {"OTDEC15", "Overtime declined at 1.5"},
    {"OTDEC20", "Overtime declined at 2.0"},
    {"PERS", "Personal day"},
    {"SICK", "Sick"},
    {"VAC", "Vacation"},
};

constexpr const char* lastNames[] = {
    "Abbott",     "Adeyemi",    "Andersen",    "Bailey",    "Baker",      "Bélanger",  "Bennett",
    "Björk",      "Brennan",    "Brooks",      "Carter",    "Castillo",   "Chan",      "Çelik",
    "Coleman",    "Cruz",       "D'Angelo",    "Dávila",    "Diaz",       "Dubois",    "Edwards",
    "Fischer",    "Fitzgerald", "Flores",      "Foster",    "García",     "Gagnon",    "Gibson",
    "Greene",     "Haddad",     "Hansen",      "Hayes",     "Hoffmann",   "Hughes",    "Ibrahim",
    "Jackson",    "Jensen",     "Johnson",     "Kaczmarek", "Kelly",      "Khan",      "Kovač",
    "Kumar",      "Lefèvre",    "Lindqvist",   "López",     "Marsh",      "Martin",    "McAllister",
    "Mitchell",   "Morales",    "Müller",      "Murphy",    "Nakamura",   "Nguyen",    "Novak",
    "Núñez",      "O'Brien",    "O'Neill",     "Okafor",    "Olsen",      "Ortiz",     "Park",
    "Patel",      "Peña",       "Pereira",     "Petrov",    "Powell",     "Quinn",     "Ramírez",
    "Reyes",      "Roberts",    "Romano",      "Rossi",     "Santos",     "Schneider", "Shaw",
    "Silva",      "Singh",      "Søndergaard", "Sullivan",  "Tanaka",     "Thompson",  "Tremblay",
    "Turner",     "Underwood",  "Vargas",      "Walker",    "Washington", "Webb",      "Weiss",
    "Williams",   "Wójcik",     "Wong",        "Wright",    "Yılmaz",     "Young",     "Zhang",
    "Zimmermann",
};

constexpr const char* firstNames[] = {
    "Aisha",   "Alan",   "Amélie", "Ana",    "Andre",  "Angela",  "Anthony", "Beth",
    "Björn",   "Carla",  "Carlos", "Chloé",  "Daniel", "Deborah", "Diego",   "Donna",
    "Elena",   "Emeka",  "Eric",   "Fatima", "Frank",  "George",  "Grace",   "Hannah",
    "Hiroshi", "Inês",   "Ivan",   "James",  "Janet",  "Jesús",   "Joan",    "José",
    "Karen",   "Keith",  "Kwame",  "Laura",  "Liam",   "Linda",   "Lukas",   "María",
    "Mei",     "Miguel", "Nadia",  "Nicole", "Omar",   "Patrick", "Paula",   "Priya",
    "Rachel",  "Raj",    "René",   "Robert", "Rosa",   "Samuel",  "Sean",    "Sofia",
    "Susan",   "Teresa", "Thomas", "Tuan",   "Victor", "Wanda",   "Yusuf",   "Zoë",
};

template<class Type, std::size_t size>
const Type& pick(const Type (&items)[size], QRandomGenerator& random) {
    return items[random.bounded(static_cast<quint32>(size))];
}

bool chance(int percent, QRandomGenerator& random) {
    return random.bounded(100) < percent;
}

// Every last name once before one comes again, so that namesakes are rare.
class NameList {
public:
    explicit NameList(QRandomGenerator& random) : m_random(random), m_order(std::size(lastNames)) {
        std::iota(m_order.begin(), m_order.end(), 0);
    }

    QString next() {
        if (m_next == 0)
            shuffle();
        const char* last = lastNames[m_order[m_next]];
        m_next = (m_next + 1) % m_order.size();
        QString name = QString::fromUtf8(last) + QStringLiteral(", ") +
                       QString::fromUtf8(pick(firstNames, m_random));
        if (chance(25, m_random))
            name += QLatin1Char(' ') + QChar(u'A' + m_random.bounded(26)) + QLatin1Char('.');
        return name;
    }

private:
    // std::shuffle may differ from one library to the next; this one does not.
    void shuffle() {
        for (std::size_t at = m_order.size() - 1; at > 0; --at)
            std::swap(m_order[at], m_order[m_random.bounded(static_cast<quint32>(at + 1))]);
    }

    QRandomGenerator& m_random;
    std::vector<std::size_t> m_order;
    std::size_t m_next = 0;
};

// Rising codes with gaps, as a company has them after some years: four digits as long as they last.
class CodeList {
public:
    CodeList(int employees, QRandomGenerator& random) : m_random(random) {
        while (m_code * 9 <= employees)
            m_code *= 10;
        m_step = m_code * 9 / employees;
    }

    QString next() {
        m_code += 1 + m_random.bounded(m_step);
        return QString::number(m_code);
    }

private:
    QRandomGenerator& m_random;
    int m_code = 1000;
    int m_step = 1;
};

// Digits alone are what the board writes best; a few are missing, short or written otherwise.
std::optional<QString> makePhone(QRandomGenerator& random) {
    const QString area = QString::number(201 + random.bounded(700));
    const QString line = QString::number(1000 + random.bounded(9000));
    switch (random.bounded(40)) {
    case 0:
        return std::nullopt;
    case 1:
        return QStringLiteral("555") + line;
    case 2:
        return QStringLiteral("555-") + line;
    case 3:
        return area + QStringLiteral("-555-") + line;
    default:
        return area + QStringLiteral("555") + line;
    }
}

const DemoShift& makeShift(QRandomGenerator& random) {
    const int share = random.bounded(100);
    return shifts[share < 50 ? 0 : share < 75 ? 1 : share < 92 ? 2 : 3];
}

QStringList makeQualifications(QRandomGenerator& random) {
    QStringList codes;
    for (int count = 1 + random.bounded(3); count > 0; --count)
        codes << QString::fromUtf8(pick(qualifications, random));
    codes.removeDuplicates();
    return codes;
}

DemoPerson makePerson(NameList& names, CodeList& codes, QDate end, QRandomGenerator& random) {
    DemoPerson person;
    person.code = codes.next();
    person.name = names.next();
    person.department = demoDepartment(random);
    person.shift = &makeShift(random);
    if (chance(30, random))
        person.rule = QString::number(1 + random.bounded(4));
    person.phone = makePhone(random);
    if (!chance(4, random))
        person.seniorityDate = end.addDays(-30 - random.bounded(30 * 365));
    person.qualifications = makeQualifications(random);
    person.hasDefault = !chance(6, random);
    if (chance(3, random))
        person.qualifications.clear();
    person.overtimePercent = chance(15, random) ? 0 : 4 + random.bounded(32);
    return person;
}

// The longest service gets number 1. Whoever has no date, and a few others, have no number.
void numberBySeniority(std::vector<DemoPerson>& people, QRandomGenerator& random) {
    std::vector<DemoPerson*> dated;
    dated.reserve(people.size());
    for (DemoPerson& person : people) {
        if (person.seniorityDate)
            dated.push_back(&person);
    }
    std::stable_sort(dated.begin(), dated.end(), [](const auto* left, const auto* right) {
        return *left->seniorityDate < *right->seniorityDate;
    });
    for (std::size_t rank = 0; rank < dated.size(); ++rank) {
        if (!chance(4, random))
            dated[rank]->seniorityNumber = static_cast<int>(rank) + 1;
    }
}

template<class Type>
Cell optionalCell(const std::optional<Type>& value) {
    return value ? Cell(*value) : Cell();
}

void loadCodes(Database& database) {
    TableLoader shiftRows(
        database, u"Shift",
        {u"Shift_Code", u"Shift_Rule_Num", u"shift_descr", u"shift_start", u"shift_stop"});
    for (const DemoShift& shift : shifts)
        shiftRows.insert({shift.code, shift.rule, shift.description, timeOfDay(shift.start),
                          timeOfDay(shift.start + shift.length)});
    TableLoader departmentRows(database, u"Department", {u"dept_code", u"dept_descr"});
    for (const CodeAndText& department : departments)
        departmentRows.insert({department.code, department.text});
    TableLoader absenceRows(database, u"Absentee", {u"absent_code", u"absent_descr"});
    for (const CodeAndText& absence : absences)
        absenceRows.insert({absence.code, absence.text});
    for (TableLoader* rows : {&shiftRows, &departmentRows, &absenceRows})
        rows->finish();
}

} // namespace

QString demoDepartment(QRandomGenerator& random) {
    return QString::fromUtf8(pick(departments, random).code);
}

std::span<const char* const> demoAnswerCodes() {
    return answerCodes;
}

std::vector<DemoPerson> makePeople(const DemoSettings& settings, QRandomGenerator& random) {
    NameList names(random);
    CodeList codes(settings.employees, random);
    std::vector<DemoPerson> people;
    people.reserve(static_cast<std::size_t>(settings.employees));
    for (int made = 0; made < settings.employees; ++made)
        people.push_back(makePerson(names, codes, settings.end, random));
    numberBySeniority(people, random);
    return people;
}

void loadPeople(Database& database, const std::vector<DemoPerson>& people) {
    loadCodes(database);
    TableLoader employees(database, u"Employee",
                          {u"emp_code", u"emp_name", u"sendate", u"Seniority", u"emp_dept",
                           u"phone", u"emp_shift", u"defaulttimecalc"});
    TableLoader held(database, u"Emp_Qualifications", {u"Emp_Code", u"Qual_Code", u"Default"});
    for (const DemoPerson& person : people) {
        employees.insert({person.code, person.name, optionalCell(person.seniorityDate),
                          optionalCell(person.seniorityNumber), person.department,
                          optionalCell(person.phone), person.shift->code,
                          optionalCell(person.rule)});
        for (const QString& code : person.qualifications) {
            const bool isDefault = person.hasDefault && code == person.qualifications.first();
            held.insert({person.code, code, isDefault ? -1 : 0});
        }
    }
    employees.finish();
    held.finish();
}

void loadSchedule(Database& database, const std::vector<DemoPerson>& people,
                  const DemoSettings& settings) {
    TableLoader rows(database, u"Schedule", {u"sched_emp", u"sched_date", u"sched_shift"});
    for (const DemoPerson& person : people) {
        for (QDate day = settings.end.addDays(-28); day <= settings.end.addDays(14);
             day = day.addDays(1)) {
            if (person.shift->worksOn(day))
                rows.insert({person.code, day, person.shift->code});
        }
    }
    rows.finish();
}

} // namespace tallyroom::host
