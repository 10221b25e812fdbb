#include "host/screens/OvertimeTable.h"
#include "host/screens/ScheduleTable.h"
#include "host/screens/TransactionTable.h"
#include "tests/host/HostDataFolder.h"

#include <gtest/gtest.h>

namespace tallyroom::host {
namespace {

class ScreenTablesTest : public testing::Test {
protected:
    ScreenTablesTest() {
        add(QStringLiteral("Insert Into [Employee] ([emp_code], [emp_name], [emp_dept]) "
                           "Values ('1', 'Ann', 'A');"));
        add(QStringLiteral("Insert Into [Employee] ([emp_code], [emp_name], [emp_dept]) "
                           "Values ('2', 'Bo', 'A');"));
        add(QStringLiteral("Insert Into [Department] ([dept_code], [dept_descr]) "
                           "Values ('A', 'Assembly');"));
        addDay(QStringLiteral("'1', #3/31/2024#, 'TR', 0.0625, 0.03125, NULL, NULL"));
        addDay(QStringLiteral("'1', #3/30/2024#, 'AR', NULL, NULL, 60, NULL"));
        addDay(QStringLiteral("'2', #3/31/2024#, 'AR', NULL, NULL, NULL, 30"));
        addDay(QStringLiteral("'2', #3/31/2024#, 'PR', 0.5, 0.5, NULL, NULL"));
        addDay(QStringLiteral("'2', #4/1/2024#, 'TR', 0.5, 0.5, NULL, NULL"));
        add(QStringLiteral("Insert Into [Schedule] ([sched_emp], [sched_date], [sched_shift]) "
                           "Values ('2', #3/30/2024#, 'DAY');"));
        m_data = readHostData(*m_database);
    }

    void add(const QString& sql) { m_database->execute(sql); }

    void addDay(const QString& values) {
        add(QStringLiteral("Insert Into [TimeHistory] ([thist_emp], [shift_date], "
                           "[thist_record_type], [t15], [t20], [tlyrAccepted], [tlyrDeclined2]) "
                           "Values (%1);")
                .arg(values));
    }

    HostDataFolder m_folder{[](DemoSettings& settings) { settings.bare = true; }};
    std::shared_ptr<Database> m_database = Workspace::openHostOptions(m_folder.path());
    HostData m_data;
    Period m_march{QDate(2024, 3, 1), QDate(2024, 3, 31)};
};

QStringList joined(const ValueTable& table) {
    QStringList lines;
    for (const QStringList& cells : table.texts().rows)
        lines << cells.join(QLatin1Char('|'));
    return lines;
}

TEST_F(ScreenTablesTest, OvertimeIsAddedUpForEverybodyAndEveryDepartment) {
    add(QStringLiteral("Insert Into [Employee] ([emp_code], [emp_name], [emp_dept]) "
                       "Values ('3', 'Cy', 'B');"));
    m_data = readHostData(*m_database);
    EXPECT_EQ(
        joined(overtimeTable(*m_database, m_data, m_march, OvertimeGrouping::Employee)),
        QStringList({QStringLiteral("1|Ann|01:30|00:45|01:00||||03:15"),
                     QStringLiteral("2|Bo||||||00:30|00:30"), QStringLiteral("3|Cy|||||||00:00"),
                     QStringLiteral("|Total|01:30|00:45|01:00|||00:30|03:45")}));
    EXPECT_EQ(joined(overtimeTable(*m_database, m_data, m_march, OvertimeGrouping::Department)),
              QStringList({QStringLiteral("A|Assembly|01:30|00:45|01:00|||00:30|03:45"),
                           QStringLiteral("B|B|||||||00:00"),
                           QStringLiteral("|Total|01:30|00:45|01:00|||00:30|03:45")}));
}

TEST_F(ScreenTablesTest, TransactionsAreThoseOfTheEmployeeAndThePeriod) {
    EXPECT_EQ(transactionTable(*m_database, m_data, QStringLiteral("1"), m_march).rows.size(), 2U);
    EXPECT_EQ(transactionTable(*m_database, m_data, QString(), m_march).rows.size(), 4U);
    EXPECT_TRUE(
        transactionTable(*m_database, m_data, QStringLiteral("it's"), m_march).rows.empty());
    EXPECT_EQ(lastRecordedDay(*m_database), QDate(2024, 4, 1));
}

TEST_F(ScreenTablesTest, TheLastDayIsThatOfAllEmployees) {
    for (int number = 10; number < 60; ++number)
        add(QStringLiteral("Insert Into [Employee] ([emp_code]) Values ('%1');").arg(number));
    addDay(QStringLiteral("'59', #5/1/2024#, 'TR', 0, 0, NULL, NULL"));
    addDay(QStringLiteral("'nobody', #6/1/2024#, 'TR', 0, 0, NULL, NULL"));
    EXPECT_EQ(lastRecordedDay(*m_database), QDate(2024, 5, 1));
}

TEST_F(ScreenTablesTest, TheCanvassPeriodIsThatOfTheAddInWhereItCanBeRead) {
    const auto addIn = m_folder.open(QStringLiteral("aidb01.mdb"));
    const auto shown = [&](const char* values) {
        addIn->execute(QStringLiteral("Delete * from [tlyr_period];"));
        if (*values)
            addIn->execute(QStringLiteral("Insert Into [tlyr_period] ([from_date], [to_date]) "
                                          "Values (%1);")
                               .arg(QString::fromLatin1(values)));
        const auto period = canvassPeriod(m_folder.path());
        return period ? shownDay(period->from) + shownDay(period->to) : QString();
    };
    EXPECT_EQ(shown("#3/1/2024#, #3/9/2024#"), QStringLiteral("03/01/202403/09/2024"));
    for (const char* undefined : {"", "#3/1/2024#, NULL"})
        EXPECT_EQ(shown(undefined), QString());
    addIn->execute(QStringLiteral("Drop Table [tlyr_period];"));
    EXPECT_FALSE(canvassPeriod(m_folder.path()));
    EXPECT_EQ(nearestDay(m_march, QDate(2024, 2, 1)), m_march.from);
    EXPECT_EQ(nearestDay({m_march.to, m_march.from}, QDate(2024, 3, 5)), QDate(2024, 3, 5));
    EXPECT_EQ(nearestDay(m_march, QDate(2025, 1, 1)), m_march.to);
}

TEST_F(ScreenTablesTest, ScheduleHasAColumnForEachDayOfItsSpan) {
    const Period week = spanAround(QDate(2024, 3, 30), ScheduleSpan::Week);
    EXPECT_EQ(week.from, QDate(2024, 3, 25));
    EXPECT_EQ(joined(scheduleTable(*m_database, m_data, week)),
              QStringList({QStringLiteral("1|Ann|||||||"), QStringLiteral("2|Bo||||||DAY|")}));
    const Period month = spanAround(QDate(2024, 2, 10), ScheduleSpan::Month);
    EXPECT_EQ(scheduleTable(*m_database, m_data, month).columns.size(), 2U + 29U);
    EXPECT_EQ(moved(QDate(2024, 3, 31), ScheduleSpan::Month, -1), QDate(2024, 2, 29));
}

} // namespace
} // namespace tallyroom::host
