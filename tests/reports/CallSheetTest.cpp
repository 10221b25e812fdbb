#include "reports/CallSheet.h"
#include "audit/Contacts.h"
#include "ordering/Orderings.h"
#include "reports/StandingReport.h"
#include "tests/audit/AuditFolder.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

const QDate day(2020, 2, 3); // of AuditFolder's answers

class CallSheetTest : public testing::Test {
protected:
    CallSheetTest() {
        folder.addHost(5);
        folder.setPeriod(u"1/1/2020", u"2/29/2020");
        request.kind = ReportKind::Calls;
        request.date = day;
    }

    void addTransaction(QStringView emp, QStringView type, QStringView code) const {
        folder.execute(hostFile,
                       QStringLiteral("Insert Into [TimeHistory] ([thist_emp], [shift_date], "
                                      "[thist_record_type], [thist_attend_code], [thist_shift]) "
                                      "Values ('%1', #2/3/2020#, '%2', '%3', 'S1');")
                           .arg(emp, type, code));
    }
    Report sheet() const { return callSheet(folder.path(), request, {}); }
    // "E1|Declined 1:30 …" of each line.
    QStringList lines() const {
        QStringList result;
        const TextTable table = sheet().tables.front().texts();
        for (const QStringList& row : table.rows)
            result << row.value(static_cast<int>(callSheetCode)) + u'|' + row.value(6);
        return result;
    }

    AuditFolder folder;
    ReportRequest request;
};

TEST_F(CallSheetTest, SaysWhatIsKnownOfTheDay) {
    addTransaction(u"e1", u"AR", u"vac");
    folder.execute(
        hostFile,
        u"Insert Into [Absentee] ([absent_code], [absent_descr]) Values ('VAC', 'Away');");
    addTransaction(u"e2 ", u"TR", u"");
    folder.addAnswer(u"Ann", u"E3", 1, 90, declinedColumn);
    Contacts::record(folder.path(), {Date{43864.5},
                                     QStringLiteral("Ann"),
                                     QStringLiteral("E4"),
                                     Dates::fromQDate(day),
                                     Contacts::Outcome::NoAnswer,
                                     {}});
    EXPECT_EQ(lines(), QStringList({QStringLiteral("E2|works shift S1"),
                                    QStringLiteral("E3|Declined 1:30, 1/2/2020 12:00 by Ann"),
                                    QStringLiteral("E4|No answer, 2/3/2020 12:00 by Ann"),
                                    QStringLiteral("E5|")}))
        << "an answer is no absence";
    EXPECT_EQ(sheet().notes,
              QStringList(QStringLiteral("Left out, absent that day: E1 Name 1 (Away).")));
}

TEST_F(CallSheetTest, GoesByGroupAndOrder) {
    folder.addHistory(u"E2", u"2/1/2020", 60, 0);
    folder.addHistory(u"E5", u"2/1/2020", 30, 0);
    ASSERT_EQ(Orderings::add(folder.path(), {QStringLiteral("Most first"),
                                             QStringLiteral("Total Overtime_State=True|Total "
                                                            "Overtime_Direction=1|Index0=Total "
                                                            "Overtime")}),
              Orderings::SaveResult::Saved);
    request.order = QStringLiteral("Most first");
    EXPECT_EQ(lines().mid(0, 2).join(u' '), QStringLiteral("E2| E5|"));
    request.group.department = QStringLiteral("D2");
    EXPECT_EQ(lines(), QStringList({QStringLiteral("E2|"), QStringLiteral("E5|")}));
    request.group.department = QStringLiteral("none");
    EXPECT_TRUE(sheet().notes.value(0).contains(QStringLiteral("empty")));
}

TEST_F(CallSheetTest, RefusesWhatIsNoRequest) {
    const std::function<void()> changes[] = {[&] { request.date = {}; },
                                             [&] { request.start = QStringLiteral("25:00"); },
                                             [&] { request.hours = QStringLiteral("many"); },
                                             [&] { request.order = QStringLiteral("none"); }};
    for (const auto& change : changes) {
        const ReportRequest good = request;
        change();
        EXPECT_THROW(sheet(), BadRequest);
        request = good;
    }
    request.start = QStringLiteral("22:00");
    request.hours = QStringLiteral("8");
    EXPECT_EQ(sheet().details.front(),
              QStringLiteral("Overtime on Monday 02/03/2020, 22:00 to 06:00 the next day"));
}

// Rebuilt: E2 had an hour and a half of what was recorded after it besides.
TEST_F(CallSheetTest, AStandingThatWasNotKeptIsRebuilt) {
    folder.addHistory(u"E2", u"2/1/2020", 60, 0);
    folder.addAnswer(u"Ann", u"E3", 1, 90, declinedColumn, 3);
    folder.addAnswer(u"Ann", u"E2", 0, 120, acceptedColumn, 2);
    folder.addAnswer(u"Ann", u"E1", 0, 30, acceptedColumn, 4);
    request.kind = ReportKind::Standing;
    request.employee = QStringLiteral("E3");
    const QString words = standingReport(folder.path(), request, {}).words.join(u'\n');
    EXPECT_TRUE(words.contains(QStringLiteral("E3 Name 3 stood in place 2 of 5 with a total of")))
        << words.toStdString();
    EXPECT_TRUE(words.contains(QStringLiteral("1. E1 Name 1")));
    EXPECT_TRUE(words.contains(QStringLiteral("Nobody stood before who had been asked.")));
    request.employee = QStringLiteral("E9");
    EXPECT_THROW(standingReport(folder.path(), request, {}), BadRequest);
}

} // namespace
