#include "reports/Checks.h"
#include "audit/Contacts.h"
#include "audit/Standing.h"
#include "tests/support/DataFolder.h"

using namespace tallyroom;
using namespace Qt::Literals::StringLiterals;

namespace {

Date moment(int day, int hour = 12, int month = 1) {
    return Dates::fromQDateTime({QDate(2020, month, day), QTime(hour, 0)});
}

Date dayOf(int day, int month = 1) {
    return Dates::fromQDate({2020, month, day});
}

// Recorded by Ann on 1/9 unless told otherwise.
struct Answer {
    QString code;
    Date date = dayOf(10);
    int minutes = 240;
    AuditAction action = AuditAction::Accepted;
    QString column = u"tlyrAccepted"_s;
    Date now = moment(9);
};

// January 2020: an evening on which all is as it should be.
class CheckedFolder : public DataFolder {
public:
    CheckedFolder() {
        addHost(5);
        associateAll();
        setPeriod(u"1/1/2020", u"1/31/2020");
        record({u"E1"_s});
        record({u"E1"_s, dayOf(11), 120, AuditAction::Accepted, u"tlyrAccepted"_s});
        record({u"E1"_s, dayOf(11), 60, AuditAction::Accepted, u"tlyrAccepted2"_s});
        enter({u"E3"_s, dayOf(10), 240, AuditAction::Deleted}); // has no transaction any more
        work(u"E4"_s, dayOf(10), u"TR"_s);
        work(u"E4"_s, dayOf(12), u"AR"_s); // an ordinary absence
        work(u"E5"_s, dayOf(12), u"HR"_s);
    }

    void enter(const Answer& answer) const {
        open(addInFile)->appendRows(
            u"TLYR_Audit"_s, Standing::keyColumns(),
            {{answer.now, u"Ann"_s, answer.code, answer.date,
              static_cast<std::int32_t>(answer.action), answer.minutes, answer.column}});
    }
    void transact(const Answer& answer) const {
        open(hostFile)->appendRows(
            u"TimeHistory"_s,
            {u"thist_emp"_s, u"shift_date"_s, u"thist_record_type"_s, answer.column},
            {{answer.code, answer.date, u"AR"_s, answer.minutes}});
    }
    void record(const Answer& answer) const {
        enter(answer);
        transact(answer);
    }
    void work(const QString& code, Date day, const QString& type) const {
        open(hostFile)->appendRows(u"TimeHistory"_s,
                                   {u"thist_emp"_s, u"shift_date"_s, u"thist_record_type"_s},
                                   {{code, day, type}});
    }
    // The answer of E3 for 1/20, the third of a board of five.
    void stand() const {
        const Answer answer{u"E3"_s, dayOf(20)};
        record(answer);
        Standing::Snapshot board;
        for (const char* code : {"E1", "E2", "E3"})
            board.rows.push_back({QString::fromLatin1(code), {}, false});
        board.listed = 5;
        const auto addIn = open(addInFile);
        addIn->execute(Standing::keepPlace({answer.now, u"Ann"_s, answer.code, answer.date,
                                            answer.action, answer.minutes, answer.column},
                                           {u"1"_s, 3, 5, Variant::null(), Variant::null()}));
        addIn->appendRows(u"TLYR_Standing"_s, {u"Command"_s, u"Listed"_s, u"Details"_s},
                          {{u"1"_s, board.listed, Standing::toText(board)}});
    }
    void call(const QString& code, int hour) const {
        Contacts::record(
            path(), {moment(9, hour), u"Ann"_s, code, dayOf(20), Contacts::Outcome::NoAnswer, {}});
    }
    void change(const char16_t* file, QStringView statement) const { execute(file, statement); }

    Report check() const {
        ReportRequest request;
        request.period = {{2020, 1, 1}, {2020, 1, 15}};
        return checksReport(path(), request, {});
    }
};

// "caption|code|what" of each finding.
QStringList linesOf(const Report& report) {
    QStringList lines;
    for (const ValueTable& table : report.tables) {
        for (const Row& row : table.rows) {
            EXPECT_FALSE(row[4].toText().isEmpty());
            lines << QStringList{table.caption, row[1].toText(), row[3].toText()}.join(u'|');
        }
    }
    EXPECT_EQ(report.findings, lines.size());
    return lines;
}

struct Fault {
    const char* name;
    void (*plant)(const CheckedFolder&);
    QString expected; // of the only line, a part; empty where nothing may be found
    QString caption;
};

const Fault faults[] = {
    {"clean", [](const CheckedFolder&) {}, {}, {}},
    {"all asked in turn or called, or away",
     [](const CheckedFolder& folder) {
         folder.record(
             {u"E1"_s, dayOf(20), 60, AuditAction::Declined, u"tlyrDeclined"_s, moment(9, 11)});
         folder.call(u"E2"_s, 11);
         folder.stand();
     },
     {},
     {}},
    {"two answers",
     [](const CheckedFolder& folder) {
         folder.record(
             {u"e1"_s, dayOf(10), 60, AuditAction::Declined, u"tlyrDeclined"_s, moment(8, 9)});
         folder.change(hostFile, u"Update [TimeHistory] Set [thist_emp] = 'E1' where "
                                 u"[tlyrDeclined] = 60;");
         folder.change(addInFile, u"Update [TLYR_Audit] Set [Emp_Code] = 'E1' where [OT] = 60;");
     },
     u"|E1|Declined 1:00, 1/8/2020 9:00 by Ann; Accepted 4:00"_s, u"Several"_s},
    {"outside the period",
     [](const CheckedFolder& folder) {
         folder.record({u"E2"_s, dayOf(3, 2)});
     },
     u"|E2|Accepted 4:00"_s, u"outside the totalling"_s},
    {"too much",
     [](const CheckedFolder& folder) {
         folder.record({u"E2"_s, dayOf(12), 800});
     },
     u"|E2|Accepted 13:20, 1/9/2020 12:00 by Ann: more than 12:00"_s, u"Unusual"_s},
    {"too far",
     [](const CheckedFolder& folder) {
         folder.change(addInFile, u"Delete * from [tlyr_period];");
         folder.record({u"E2"_s, dayOf(1, 4)});
     },
     u"83 days ahead"_s, u"Unusual"_s},
    {"absent",
     [](const CheckedFolder& folder) {
         folder.record({u"E4"_s, dayOf(12)});
     },
     u"|E4|Accepted"_s, u"day of absence"_s},
    {"asked out of turn",
     [](const CheckedFolder& folder) {
         folder.record(
             {u"E1"_s, dayOf(20), 60, AuditAction::Accepted, u"tlyrAccepted"_s, moment(9, 11)});
         folder.call(u"E2"_s, 13); // too late
         folder.stand();
     },
     u"|E3|Place 3 of 5 (no ordering), before E2 Name 2"_s, u"Asked before"_s},
    {"no entry",
     [](const CheckedFolder& folder) {
         folder.transact({u"E2"_s, dayOf(20)});
     },
     u"|E2|Accepted 4:00 at 1.5"_s, u"history that the audit"_s},
    {"no transaction", [](const CheckedFolder& folder) { folder.enter({u"E2"_s}); },
     u"|E2|Accepted 4:00, 1/9/2020 12:00 by Ann"_s, u"audit that the history"_s},
    {"other minutes",
     [](const CheckedFolder& folder) {
         folder.change(hostFile, u"Update [TimeHistory] Set [tlyrAccepted] = 90 where "
                                 u"[tlyrAccepted] = 240;");
     },
     u": in the history 1:30"_s, u"audit that the history"_s},
    {"gone, in the audit",
     [](const CheckedFolder& folder) {
         folder.enter({u"E9"_s, dayOf(10), 240, AuditAction::Deleted});
     },
     u"|E9|Entries in the audit: 1"_s, u"no longer there"_s},
    {"gone, in the history",
     [](const CheckedFolder& folder) { folder.work(u"E9"_s, dayOf(10), u"TR"_s); },
     u"|E9|Records in the history: 1"_s, u"no longer there"_s},
    {"apostrophe",
     [](const CheckedFolder& folder) {
         folder.open(hostFile)->appendRows(u"Employee"_s, {u"emp_code"_s, u"emp_shift"_s},
                                           {{u"O'1"_s, u"S1"_s}});
     },
     u"|O'1|Employee"_s, u"apostrophe"_s},
    {"spelling in the history",
     [](const CheckedFolder& folder) { folder.work(u"e2"_s, dayOf(10), u"TR"_s); },
     u"|e2|History"_s, u"spellings"_s},
    {"spelling of a shift",
     [](const CheckedFolder& folder) {
         folder.change(hostFile,
                       u"Update [Employee] Set [emp_shift] = 's1' where [emp_code] = 'E2';");
     },
     u"|s1|Employees' shift"_s, u"spellings"_s},
    {"unknown shift",
     [](const CheckedFolder& folder) {
         folder.change(hostFile,
                       u"Update [Employee] Set [emp_shift] = 'S9' where [emp_code] <> 'E1';");
     },
     u"|S9|Of E2 Name 2, E3 Name 3, E4 Name 4 and 1 others"_s, u"Shifts"_s},
    {"no associations",
     [](const CheckedFolder& folder) { folder.change(addInFile, u"Delete * from [tlyr_assoc];"); },
     u"None is set up"_s, u"Absent codes"_s},
    {"an association that is missing",
     [](const CheckedFolder& folder) {
         folder.change(addInFile, u"Update [tlyr_assoc] Set [Declined2] = NULL;");
     },
     u"Declined at 2.0: no code"_s, u"Absent codes"_s},
    {"an association that is none",
     [](const CheckedFolder& folder) {
         folder.change(addInFile, u"Update [tlyr_assoc] Set [Accepted] = 'GONE';");
     },
     u"|GONE|Accepted at 1.5: there is no such code"_s, u"Absent codes"_s},
};

TEST(Checks, FindEachPlantedFaultAndNothingElse) {
    for (const Fault& fault : faults) {
        SCOPED_TRACE(fault.name);
        const CheckedFolder folder;
        fault.plant(folder);
        const QStringList lines = linesOf(folder.check());
        ASSERT_EQ(lines.size(), fault.expected.isEmpty() ? 0 : 1)
            << lines.join(u'\n').toStdString();
        if (!lines.isEmpty()) {
            EXPECT_TRUE(lines[0].contains(fault.expected)) << lines[0].toStdString();
            EXPECT_TRUE(lines[0].contains(fault.caption)) << lines[0].toStdString();
        }
    }
}

TEST(Checks, SayWhatTheyCannotTell) {
    const CheckedFolder folder;
    EXPECT_TRUE(folder.check().notes.join(u' ').contains(u"cannot be checked for 3 of 3 answers"));
    folder.record({u"E2"_s, Date{dayOf(1).serial - 5}, 240, AuditAction::Accepted,
                   u"tlyrAccepted"_s, dayOf(1)});
    folder.change(addInFile, u"Drop Table [TLYR_Standing];");
    folder.change(addInFile, u"Drop Table [TLYR_Contact];");
    const Report report = folder.check();
    EXPECT_TRUE(report.notes.join(u' ').contains(u"no place to keep")) << report.notes.size();
    EXPECT_EQ(report.findings, 1); // recorded in the period for a day before it
    folder.change(addInFile, u"Update [TLYR_Audit] Set [Date] = NULL where [Emp_Code] = 'E3';");
    EXPECT_TRUE(
        folder.check().notes.join(u' ').contains(u"cannot be read and were not checked: 1"));
}

TEST(Checks, AreOfTheLastTwoWeeksWithAnswersUnlessAskedOtherwise) {
    const CheckedFolder folder;
    folder.enter({u"E2"_s, dayOf(1), 240, AuditAction::Accepted, u"tlyrAccepted"_s,
                  Date{moment(9).serial - 14}});
    const Report report = checksReport(folder.path(), {}, {});
    EXPECT_EQ(report.details.value(0), u"Answers recorded from 12/27/2019 to 01/09/2020"_s);
    EXPECT_EQ(report.findings, 0);
}

} // namespace
