#include "common/RunError.h"
#include "host/demo/TableLoader.h"
#include "ordering/SettingsText.h"
#include "store/Schema.h"
#include "tests/host/HostDataFolder.h"
#include "tests/support/DataFolder.h"

#include <QDir>
#include <gtest/gtest.h>

namespace tallyroom::host {

QStringList HostDataFolder::everything() const {
    QStringList lines;
    for (const Schema::File& file : Schema::files()) {
        const auto database = open(QString::fromUtf16(file.name));
        for (const Schema::Table& table : file.tables) {
            const QString all =
                QStringLiteral("Select * from [%1];").arg(QString::fromUtf16(table.name));
            lines += textsOf(*database->openRecordset(all, RecordsetType::Snapshot));
        }
    }
    return lines;
}

namespace {

void create(const DemoSettings& settings) {
    createDemoData(settings, [](int, int) {});
}

TEST(DemoData, DependsOnTheSettingsOnly) {
    const HostDataFolder first;
    const HostDataFolder second;
    const HostDataFolder other([](DemoSettings& settings) { settings.seed = 8; });
    EXPECT_GT(first.everything().size(), 40 * 40);
    EXPECT_EQ(first.everything(), second.everything());
    EXPECT_NE(first.everything(), other.everything());
}

TEST(DemoData, ARowIsRefusedThatDoesNotFitItsColumns) {
    const HostDataFolder folder;
    const auto file = Workspace::openHostOptions(folder.path());
    TableLoader rows(*file, u"Department", {u"dept_descr", u"dept_code"});
    rows.insert({"Described", "NEW"});
    EXPECT_THROW(rows.insert({"Described", "NEW2", Cell()}), std::logic_error);
    EXPECT_THROW(rows.insert({"Described"}), std::logic_error);
    EXPECT_THROW(TableLoader(*file, u"Department", {u"descr"}).finish(), RunError);
    rows.finish();
    EXPECT_EQ(folder.hostCount(QStringLiteral("[Department] where [dept_code] in ('NEW', 'NEW2') "
                                              "and [dept_descr] = 'Described'")),
              1);
}

TEST(DemoData, RefusesAFolderThatHoldsSomethingAndLeavesNothingBehind) {
    const QTemporaryDir place;
    const QDir folder(place.path());
    QFile note(folder.filePath(QStringLiteral("note.txt")));
    ASSERT_TRUE(note.open(QIODevice::WriteOnly));
    DemoSettings settings = smallSettings(folder.path());
    EXPECT_THROW(create(settings), RunError);
    settings.folder = note.fileName();
    EXPECT_THROW(create(settings), RunError);
    settings.folder = note.fileName() + QStringLiteral("/below/a/file");
    EXPECT_THROW(create(settings), RunError);
    EXPECT_EQ(folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("note.txt")});
}

TEST(DemoData, TakesAnEmptyFolderAndMakesMissingParents) {
    const QTemporaryDir place;
    DemoSettings settings = smallSettings(place.path());
    settings.bare = true;
    create(settings);
    settings.folder = place.filePath(QStringLiteral("a/b"));
    create(settings);
    EXPECT_TRUE(QFile::exists(place.filePath(QStringLiteral("a/b/bcx.mdb"))));
}

TEST(DemoData, CodesReferToWhatExists) {
    const HostDataFolder folder;
    const struct {
        const char* table;
        const char* column;
        const char* of;
        const char* key;
    } references[] = {
        {"TimeHistory", "thist_emp", "Employee", "emp_code"},
        {"TimeHistory", "thist_shift", "Shift", "Shift_Code"},
        {"TimeHistory", "thist_dept", "Department", "dept_code"},
        {"Emp_Qualifications", "Emp_Code", "Employee", "emp_code"},
        {"Employee", "emp_shift", "Shift", "Shift_Code"},
        {"Employee", "emp_dept", "Department", "dept_code"},
        {"Schedule", "sched_emp", "Employee", "emp_code"},
    };
    for (const auto& reference : references)
        EXPECT_EQ(folder.hostCount(QStringLiteral("[%1] where [%2] not in (Select [%4] from [%3])")
                                       .arg(QString::fromLatin1(reference.table),
                                            QString::fromLatin1(reference.column),
                                            QString::fromLatin1(reference.of),
                                            QString::fromLatin1(reference.key))),
                  0)
            << reference.table << "." << reference.column;
    EXPECT_EQ(folder.hostCount(QStringLiteral("[TimeHistory] where [thist_attend_code] <> NULL and "
                                              "[thist_attend_code] not in (Select [absent_code] "
                                              "from [Absentee])")),
              0);
}

TEST(DemoData, OvertimeIsInWholeMinutesAndSomeOfItDoesNotCount) {
    const HostDataFolder folder;
    EXPECT_GT(folder.hostCount(QStringLiteral("[TimeHistory] where [thist_record_type] not in "
                                              "('TR','AR','HR') and [t15] > 0")),
              0);
    const auto rows = folder.open(QStringLiteral("bcx.mdb"))
                          ->openRecordset(QStringLiteral("Select [t15] from [TimeHistory] where "
                                                         "[t15] <> NULL;"),
                                          RecordsetType::Snapshot);
    EXPECT_GT(rows->rowCount(), 40 * 30 / 20);
    for (; !rows->eof(); rows->moveNext()) {
        const double minutes = rows->field(0).toDouble() * 1440;
        ASSERT_NEAR(minutes, qRound(minutes), 1e-6);
    }
}

TEST(DemoData, EveryAnswerIsInTheHistoryAndInTheAudit) {
    const HostDataFolder folder;
    EXPECT_EQ(folder
                  .value(QStringLiteral("aidb01.mdb"),
                         QStringLiteral("Select Count(*) from [tlyr_assoc];"))
                  .toLong(),
              1);
    int answers = 0;
    for (const char* field : {"tlyrAccepted", "tlyrAccepted2", "tlyrDeclined", "tlyrDeclined2"}) {
        const QString name = QString::fromLatin1(field);
        const int inHistory = folder.hostCount(
            QStringLiteral("[TimeHistory] where [%1] > 0 and [thist_record_type] = 'AR'")
                .arg(name));
        EXPECT_EQ(
            folder.addInCount(QStringLiteral("[TLYR_Audit] where [tHistField] = '%1'").arg(name)),
            inHistory)
            << field;
        answers += inHistory;
    }
    EXPECT_GT(answers, 0);
}

TEST(DemoData, OrderingsNameAllElementsInRankOrder) {
    const HostDataFolder folder;
    const auto rows =
        folder.open(QStringLiteral("aidb01.mdb"))
            ->openRecordset(QStringLiteral("Select * from [tlyr_order];"), RecordsetType::Snapshot);
    EXPECT_GE(rows->rowCount(), 3);
    for (; !rows->eof(); rows->moveNext()) {
        const QString details = rows->field(QStringLiteral("details")).toText();
        EXPECT_EQ(details.split(QLatin1Char('|')).size(), 16 * 4);
        EXPECT_TRUE(details.startsWith(QStringLiteral("Employee Code_State=")));
        for (int rank = 0; rank < 16; ++rank) {
            const QString element = GetTagValue(details, QStringLiteral("Index%1=").arg(rank));
            EXPECT_EQ(GetTagValue(details, element + QStringLiteral("_Order")),
                      QString::number(rank));
            EXPECT_EQ(GetTagValue(details, element + QStringLiteral("_State")),
                      rank < 2 ? QStringLiteral("True") : QStringLiteral("False"));
        }
    }
}

} // namespace
} // namespace tallyroom::host
