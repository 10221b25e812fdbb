#include "canvass/ReportDetails.h"

#include "tests/support/DataFolder.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

TEST(ReportDetails, TheOfferIsWhatIsSetAndCouldBeRecorded) {
    const struct {
        const char16_t* date;
        bool breakOut;
        const char16_t* amount;
        const char16_t* doubleAmount;
        const char16_t* line; // nullptr: there is none
    } cases[] = {
        {u"11/28/2026", false, u"8:00", u"2:00", u"Canvass date: Sat 11/28/2026 \u00b7 8:00"},
        {u"1/2/2020", true, u"7.5", u"2", u"Canvass date: Thu 01/02/2020 \u00b7 1.5: 7:30"},
        {u"1/2/2020", true, u"", u"0:15", u"Canvass date: Thu 01/02/2020 \u00b7 2.0: 0:15"},
        {u"1/2/2020", false, u"24:01", u"", u"Canvass date: Thu 01/02/2020"},
        {u"13/45/2008", false, u"12:00", u"", u"Overtime offered: 12:00"},
        {u"", false, u"", u"", nullptr},
    };
    for (const auto& c : cases) {
        ReportDetails details;
        details.canvassDate = QString::fromUtf16(c.date);
        details.breakOut = c.breakOut;
        details.amount = QString::fromUtf16(c.amount);
        details.doubleAmount = QString::fromUtf16(c.doubleAmount);
        details.employees = 1;
        QStringList expected{QStringLiteral("Totalling Period: Indefinite"),
                             QStringLiteral("Total = "), QStringLiteral("1 employee")};
        if (c.line)
            expected.insert(2, QString::fromUtf16(c.line));
        EXPECT_EQ(details.lines().join(u'\n'), expected.join(u'\n'));
    }
}

TEST(ReportDetails, TheDepartmentIsNamedWhenAllHaveIt) {
    DataFolder folder;
    for (const char16_t* values : {u"'1', 'A'", u"'2', 'A'", u"'3', 'B'", u"'4', Null"})
        folder.execute(mainFile,
                       QStringLiteral("Insert Into [tlyrTemp] ([emp_code], [emp_dept]) Values (") +
                           QString::fromUtf16(values) + QStringLiteral(");"));
    for (const auto& [codes, department] :
         std::initializer_list<std::pair<const char*, QString>>{{"1 2", QStringLiteral("A")},
                                                                {"3", QStringLiteral("B")},
                                                                {"1 3", {}},
                                                                {"1 4", {}},
                                                                {"4", {}},
                                                                {"1 9", {}},
                                                                {"", {}}}) {
        const auto rows = folder.open(mainFile)->openRecordset(
            QStringLiteral("Select * from [tlyrTemp];"), RecordsetType::Snapshot);
        EXPECT_EQ(sharedDepartment(*rows, QString::fromLatin1(codes).split(u' ')), department)
            << codes;
    }
}

} // namespace
