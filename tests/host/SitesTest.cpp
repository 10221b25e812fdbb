// Data on a server: made, copied, and worked on with no more rights than a desk needs.
#include "audit/AuditDeletion.h"
#include "canvass/AnswerRecording.h"
#include "canvass/CanvassTotals.h"
#include "host/BreakOff.h"
#include "host/RecentFolders.h"
#include "host/copy/DataCopy.h"
#include "host/demo/DemoData.h"
#include "tests/support/DataFolder.h"
#include "tests/support/FakeHost.h"
#include "tests/support/PostgresCluster.h"
#include "tests/support/Printing.h"

#include <QDir>
#include <QRegularExpression>
#include <QSettings>
#include <csignal>

namespace tallyroom::host {
namespace {

const QString database = QStringLiteral("brightclock");

class Sites : public testing::Test {
protected:
    static void SetUpTestSuite() {
        if (PostgresCluster::skipReason().isEmpty())
            PostgresCluster::shared().createDatabase(database);
    }
    void SetUp() override {
        if (const QString reason = PostgresCluster::skipReason(); !reason.isEmpty())
            GTEST_SKIP() << reason.toStdString();
    }
    static QString site(const QString& name, const QString& user = QStringLiteral("postgres")) {
        return QStringLiteral("postgresql://%1@/%2/%3?host=%4")
            .arg(user, database, name, PostgresCluster::shared().folder());
    }
    static void copy(const QString& from, const QString& to, QStringList* said = nullptr) {
        const auto say = [said](const QString& line) { said ? void(*said << line) : void(); };
        copyData(from, to, {say, [](const QString&) {}});
    }
    static void breakOffCopy(const QString& from, const QString& to) {
        BreakOff::allow();
        std::raise(SIGTERM);
        copyData(from, to, {[](const QString&) {}, [](const QString&) { BreakOff::check(); }});
    }
    // All rows of all tables but the scratch table.
    static QStringList everything(const QString& path) {
        QStringList lines;
        for (const Schema::File& file : Schema::files()) {
            const auto open = Workspace::openDatabase(path + u'\\' + QString::fromUtf16(file.name));
            for (const TableFormat& table : open->tables()) {
                if (table.name == QStringLiteral("tlyrTemp"))
                    continue;
                lines << table.name;
                lines += textsOf(
                    *open->openRecordset(QStringLiteral("Select * from [%1];").arg(table.name),
                                         RecordsetType::Snapshot));
            }
        }
        return lines;
    }

    DataFolder folder;
    QTemporaryDir place;
};

TEST_F(Sites, ACopyHasAllThatItsSourceHas) {
    folder.addHost(2);
    folder.addHistory(u"E2", u"1/1/2020", 7.1, 0);
    folder.execute(mainFile, u"Insert Into [tlyrTemp] ([emp_code]) Values ('E1');");
    folder.executeNatively(
        hostFile,
        "ALTER TABLE Employee ADD COLUMN hired DATETIME;"
        "UPDATE Employee SET hired = '2001-02-03 04:05:06' WHERE emp_code = 'E2';"
        "UPDATE Employee SET emp_name = 'Ç\\' || char(9) || char(10) || '\\N', phone = '';"
        "CREATE TABLE \"Odd \"\"one\" (n INTEGER, x REAL, anything, at DATETIME, flag BIT);"
        "INSERT INTO \"Odd \"\"one\" VALUES (-7, -0.0, 5, '1899-12-30 00:00:01', -1),"
        " (NULL, 1e-300, 'five', NULL, 0), (2147483647, 0.1, NULL, '9999-12-31 23:59:59', NULL)");
    const QStringList expected = everything(folder.path());
    QString from = folder.path();
    for (const QString& to :
         {site(QStringLiteral("one")), site(QStringLiteral("two")),
          place.filePath(QStringLiteral("a")), place.filePath(QStringLiteral("b"))}) {
        QStringList said;
        copy(from, to, &said);
        EXPECT_EQ(everything(to), expected) << to.toStdString();
        EXPECT_EQ(said.value(0), QStringLiteral("Employee: not known to this program, without "
                                                "indexes, as hired Date"));
        EXPECT_TRUE(said.value(1).startsWith(QStringLiteral("Odd \"one: not known")));
        const auto scratch = Workspace::openMain(to)->openRecordset(QStringLiteral("tlyrTemp"),
                                                                    RecordsetType::Snapshot);
        EXPECT_EQ(scratch->rowCount(), 0);
        from = to;
    }
}

TEST_F(Sites, WhatFailsLeavesNothingBehindAndWhatIsThereAlone) {
    PostgresCluster& cluster = PostgresCluster::shared();
    cluster.createDatabase(QStringLiteral("empty"));
    const QString unprepared = QStringLiteral("postgresql://postgres@/empty/new?host=%1");
    const auto breakOff = [](int, int) { throw RunError::make(ErrorNumber::outOfMemory); };
    const DataFolder bad;
    bad.executeNatively(hostFile, "INSERT INTO TimeHistory (t15) VALUES (1), ('much')");
    const DataFolder withNul;
    withNul.executeNatively(hostFile, "INSERT INTO TimeHistory (Notes) VALUES ('a' || char(0))");
    copy(folder.path(), site(QStringLiteral("taken")));
    const QString fresh = place.filePath(QStringLiteral("new"));
    const QString newSite = site(QStringLiteral("new"));
    DemoSettings demo;
    demo.employees = 50; // progress is told of so many
    demo.days = 3;
    demo.end = QDate(2024, 3, 31);
    const auto make = [&](const QString& where) {
        demo.folder = where;
        createDemoData(demo, breakOff);
    };
    const struct {
        const char* what;
        std::function<void()> run;
        int number;
    } cases[] = {
        {"a folder broken off", [&] { make(fresh); }, 7},
        {"a site broken off", [&] { make(unprepared.arg(cluster.folder())); }, 7},
        {"a value that does not fit, in a folder", [&] { copy(bad.path(), fresh); }, 3421},
        {"a value that does not fit, on a server", [&] { copy(bad.path(), newSite); }, 3421},
        {"a text that a server cannot keep", [&] { copy(withNul.path(), newSite); }, 3421},
        {"a copy broken off from outside", [&] { breakOffCopy(withNul.path(), fresh); }, 18},
        {"over a folder", [&] { copy(site(QStringLiteral("taken")), folder.path()); }, 3204},
        {"over a site", [&] { copy(folder.path(), site(QStringLiteral("TAKEN"))); }, 3204},
        {"a demonstration over a site", [&] { make(site(QStringLiteral("taken"))); }, 3204},
        {"from nowhere", [&] { copy(newSite, fresh); }, 3024},
    };
    const QStringList before = everything(folder.path());
    for (const auto& entry : cases)
        EXPECT_EQ(errorNumberOf(entry.run), entry.number) << entry.what;
    EXPECT_TRUE(QDir(place.path()).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot));
    EXPECT_EQ(everything(folder.path()), before);
    const auto none = QStringLiteral("SELECT 1 / (count(*) = 0)::int FROM pg_namespace WHERE "
                                     "nspname IN ('new_bcx', %1)");
    cluster.execute(database, none.arg(QStringLiteral("'new_aidb01'")));
    cluster.execute(QStringLiteral("empty"), none.arg(QStringLiteral("'tallyroom'")));
}

// The statements that administrators are given.
QString documentedRights() {
    QFile document(QStringLiteral(SERVER_DOCUMENT));
    EXPECT_TRUE(document.open(QIODevice::ReadOnly));
    static const QRegularExpression block(QStringLiteral("```sql\n(.*?)```"),
                                          QRegularExpression::DotMatchesEverythingOption);
    return block.match(QString::fromUtf8(document.readAll())).captured(1);
}

TEST_F(Sites, ADeskAnswersAndUndoesButMakesNoStructures) {
    folder.addHost(3);
    folder.associateAll();
    copy(folder.path(), site(QStringLiteral("north")));
    PostgresCluster::shared().execute(database, documentedRights());
    const QString desk = site(QStringLiteral("north"), QStringLiteral("ann"));
    FakeHost host;
    CanvassState state;
    state.DataPath = desk;
    state.HostOptionsDb = Workspace::openHostOptions(desk);
    ASSERT_TRUE(CanvassTotals::build(state, host.context(desk).BucketForm, false,
                                     [](const RunError& error) {
                                         ADD_FAILURE() << error.description().toStdString();
                                         return ErrorAnswer::Abort;
                                     }));
    AnswerRequest request;
    request.accept = true;
    request.amount = QStringLiteral("1:30");
    request.canvassDate = QStringLiteral("02/03/2020");
    request.user = QStringLiteral("Ann");
    request.employees = {QStringLiteral("E2")};
    EXPECT_EQ(AnswerRecording::record(state, request).recorded, 1);
    const auto answers = [&] {
        return state.HostOptionsDb
            ->openRecordset(QStringLiteral("TimeHistory"), RecordsetType::Snapshot)
            ->rowCount();
    };
    EXPECT_EQ(answers(), 1);
    deleteAuditLine(desk, {QStringLiteral("01/02/2020 12:00 pm"), QStringLiteral("E2"), QString(),
                           QStringLiteral("Ann"), QStringLiteral("02/03/2020"),
                           QStringLiteral("Accepted"), QStringLiteral("01:30")});
    EXPECT_EQ(answers(), 0);
    EXPECT_EQ(errorNumberOf(
                  [&] { state.HostOptionsDb->execute(QStringLiteral("Drop Table [Employee];")); }),
              3033);
    EXPECT_EQ(errorNumberOf([&] {
                  Workspace::createFiles(site(QStringLiteral("own"), QStringLiteral("ann")));
              }),
              3033);
}

TEST(RecentFolders, SitesAreRememberedWithoutBeingThere) {
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    const QString address = QStringLiteral("postgresql://ann@db/brightclock/north?sslmode=require");
    RecentFolders::remember(address, QStringLiteral("ann"));
    EXPECT_EQ(RecentFolders::all().value(0), address);
}

} // namespace
} // namespace tallyroom::host
