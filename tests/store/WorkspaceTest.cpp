#include "tests/store/StoreFixture.h"

#include "store/Workspace.h"
#include "store/engine/FilePaths.h"
#include "tests/support/FaultyFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <SQLiteCpp/SQLiteCpp.h>
#include <sys/stat.h>

namespace tallyroom {

namespace {

void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(Workspace, FindsFilesWithoutRegardToCaseAndSeparators) {
    const DataFolder folder;
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("Site One/Data")));
    Workspace::createFiles(folder.file(u"Site One/Data"));
    const QString expected = folder.file(u"Site One/Data/aidb01.mdb");
    const QString written[] = {QStringLiteral("\\Site One\\Data\\aidb01.mdb"),
                               QStringLiteral("\\SITE ONE\\data\\AIDB01.MDB"),
                               QStringLiteral("/Site One//Data\\aidb01.MDB"),
                               QStringLiteral("\\site one\\..\\site one\\data/aidb01.mdb")};
    for (const QString& path : written)
        EXPECT_EQ(QDir::cleanPath(FilePaths::resolveFile(hostPath(folder) + path)), expected)
            << path.toStdString();
}

TEST(Workspace, TakesTheExactSpellingWhereSeveralDifferInCase) {
    const DataFolder folder;
    writeFile(folder.file(u"AIDB01.mdb"), "other");
    EXPECT_EQ(FilePaths::resolveFile(folder.file(addInFile)), folder.file(addInFile));
}

TEST(Workspace, ReportsWhatCannotBeOpenedAndCreatesNothing) {
    const DataFolder folder;
    writeFile(folder.file(u"empty.mdb"), {});
    writeFile(folder.file(u"short.mdb"), "Hi");
    writeFile(folder.file(u"text.mdb"), QByteArray(9000, 'x'));
    QByteArray damaged = readFile(folder.file(hostFile));
    damaged.replace(100, 900, QByteArray(900, '\x7f'));
    writeFile(folder.file(u"damaged.mdb"), damaged);
    const QStringList before = QDir(folder.path()).entryList();
    const struct {
        const char16_t* path;
        int number;
    } cases[] = {{u"\\none.mdb", 3024}, {u"\\none\\bcx.mdb", 3044}, {u"\\bcx.mdb\\x", 3044},
                 {u"\\", 3024},         {u"\\empty.mdb", 3343},     {u"\\short.mdb", 3343},
                 {u"\\text.mdb", 3343}, {u"\\damaged.mdb", 3049}};
    for (const auto& entry : cases) {
        std::optional<RunError> error;
        const QString path = hostPath(folder) + QString::fromUtf16(entry.path);
        EXPECT_EQ(errorNumberOf([&] { Workspace::openDatabase(path); }, &error), entry.number)
            << path.toStdString();
        EXPECT_EQ(error ? error->source() : QString(), QStringLiteral("DAO.Workspace"));
    }
    EXPECT_EQ(QDir(folder.path()).entryList(), before);
}

TEST(Workspace, ReportsALockedFileByName) {
    const DataFolder folder;
    const auto open = folder.open(addInFile);
    SQLite::Database other(folder.file(addInFile).toStdString(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN EXCLUSIVE");
    std::optional<RunError> error;
    EXPECT_EQ(
        errorNumberOf([&] { open->execute(QStringLiteral("Delete * From tlyr_assoc")); }, &error),
        3196);
    EXPECT_TRUE(error && error->description().contains(QLatin1String("aidb01.mdb")));
}

TEST(Completion, AddsWhatAnOlderVersionDidNotMake) {
    const DataFolder folder;
    folder.execute(addInFile, u"Insert Into [TLYR_Audit] ([User], [OT]) Values ('jo', 7);");
    folder.executeNatively(
        addInFile, testsOnServer()
                       ? "ALTER TABLE \"TLYR_Audit\" ALTER COLUMN \"User\" TYPE varchar(50)"
                       : "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, "
                         "'\"User\" TEXT(255)', '\"User\" TEXT(50)'); PRAGMA schema_version = 99");
    for (const char16_t* table : {u"TLYR_Standing", u"TLYR_Contact"})
        folder.execute(addInFile, QStringLiteral("Drop Table [%1];").arg(table));
    const auto used = folder.open(addInFile); // by somebody who has read the tables already
    EXPECT_EQ(
        used->openRecordset(QStringLiteral("Select * from [TLYR_Audit];"), RecordsetType::Snapshot)
            ->rowCount(),
        1);
    const QStringList lacking = Workspace::lackingIn(folder.path());
    EXPECT_EQ(lacking.size(), 3) << lacking.join(u'\n').toStdString();
    Workspace::completeFiles(folder.path());
    Workspace::completeFiles(folder.path());
    EXPECT_EQ(Workspace::lackingIn(folder.path()), QStringList());
    const QString longName(255, u'n');
    used->execute(
        QStringLiteral("Insert Into [TLYR_Audit] ([User], [OT]) Values ('%1', 8);").arg(longName));
    EXPECT_EQ(folder.rows(addInFile, u"Select [User], [OT] from [TLYR_Audit] order by [OT];"),
              QStringList({QStringLiteral("jo|7"), longName + QStringLiteral("|8")}));
    EXPECT_EQ(folder.rows(addInFile, u"Select * from [TLYR_Contact];"), QStringList());
}

TEST(Schema, LeavesAFolderAloneThatHasOneOfTheFiles) {
    QTemporaryDir folder;
    writeFile(folder.filePath(QStringLiteral("BCX.mdb")), "kept");
    EXPECT_EQ(errorNumberOf([&] { Workspace::createFiles(folder.path()); }), 3204);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("BCX.mdb")});
    EXPECT_EQ(readFile(folder.filePath(QStringLiteral("BCX.mdb"))), "kept");
}

TEST(Schema, KeepsNewFilesFromOthers) {
    for (const auto& [mask, wanted] : {std::pair<mode_t, mode_t>{0, 0660}, {027, 0640}}) {
        const mode_t before = umask(mask);
        const DataFolder folder(false);
        Transaction writing(folder.open(addInFile), TransactionKind::Reserve);
        for (const char16_t* file : {addInFile, hostFile, u"aidb01.mdb-journal"}) {
            struct stat status {};
            stat(QFile::encodeName(folder.file(file)).constData(), &status);
            EXPECT_EQ(status.st_mode & 07777, wanted) << QString::fromUtf16(file).toStdString();
        }
        umask(before);
    }
}

class DatabaseTest : public testing::Test {
protected:
    int assocRows() const {
        const auto other = m_folder.open(addInFile);
        return other->openRecordset(QStringLiteral("tlyr_assoc"), RecordsetType::Snapshot)
            ->rowCount();
    }
    void insertAssoc(Database& database) const {
        database.execute(QStringLiteral("Insert Into tlyr_assoc (Accepted) Values ('A')"));
    }

    DataFolder m_folder;
    std::shared_ptr<Database> m_database = m_folder.open(addInFile);
};

TEST_F(DatabaseTest, ATransactionThatIsLeftUndoesItsStatements) {
    EXPECT_EQ(errorNumberOf([&] {
                  const Transaction write(m_database, TransactionKind::Write);
                  insertAssoc(*m_database);
                  EXPECT_EQ(assocRows(), 0);
                  EXPECT_EQ(errorNumberOf([&] {
                                m_database->execute(
                                    QStringLiteral("Insert Into tlyrTemp In '%1\\vrlxdb01.mdb' "
                                                   "Select Accepted As emp_code From tlyr_assoc")
                                        .arg(hostPath(m_folder)));
                            }),
                            3219)
                      << "no other file can take part";
                  m_database->execute(QStringLiteral("Delete * From nowhere"));
              }),
              3078);
    EXPECT_FALSE(m_database->inTransaction());
    EXPECT_EQ(assocRows(), 0);
}

TEST_F(DatabaseTest, ReportsATransactionThatCannotBeWritten) {
    SQLite::Database reader(m_folder.file(addInFile).toStdString());
    Transaction write(m_database, TransactionKind::Write);
    insertAssoc(*m_database);
    SQLite::Statement reading(reader, "SELECT * FROM sqlite_master");
    ASSERT_TRUE(reading.executeStep());
    EXPECT_EQ(errorNumberOf([&] { write.commit(); }), 3196);
    reading.reset();
    EXPECT_FALSE(m_database->inTransaction());
    EXPECT_EQ(assocRows(), 0);
    FaultyFiles disk;
    m_database = m_folder.open(addInFile);
    for (const bool full : {true, false}) {
        disk.setFull(full);
        EXPECT_EQ(errorNumberOf([&] { insertAssoc(*m_database); }), full ? 3026 : 0);
    }
    EXPECT_EQ(assocRows(), 1);
}

TEST_F(DatabaseTest, AnInsertIntoAnotherFileNamesTheOneThatFails) {
    m_folder.addHost();
    const auto namedBy = [this](const std::function<void()>& harm) {
        const auto host = m_folder.open(hostFile);
        harm();
        try {
            host->execute(QStringLiteral("Insert Into tlyrTemp In '%1\\vrlxdb01.mdb' Select "
                                         "emp_code From Employee;")
                              .arg(hostPath(m_folder)));
        } catch (const RunError& error) {
            return QFileInfo(error.description().section(u'\'', 1, 1)).fileName();
        }
        return QString();
    };
    {
        SQLite::Database other(m_folder.file(hostFile).toStdString(), SQLite::OPEN_READWRITE);
        EXPECT_EQ(namedBy([&] { other.exec("BEGIN EXCLUSIVE"); }), QString::fromUtf16(hostFile));
    }
    const auto shortened = [&](const char16_t* file) {
        const QByteArray whole = readFile(m_folder.file(file));
        const QString named =
            namedBy([&] { writeFile(m_folder.file(file), whole.left(whole.size() / 2)); });
        writeFile(m_folder.file(file), whole);
        return named;
    };
    for (const char16_t* file : {hostFile, mainFile})
        EXPECT_EQ(shortened(file), QString::fromUtf16(file));
}

TEST_F(DatabaseTest, ADamagedFileIsNamed) {
    m_folder.addHost();
    m_database = m_folder.open(hostFile);
    EXPECT_EQ(errorNumberOf([&] { m_database->checkStructure(); }), 0);
    QByteArray bytes = readFile(m_folder.file(hostFile));
    bytes.replace(bytes.size() - 4096, 60, QByteArray(60, '\x55')); // the last page's heading
    writeFile(m_folder.file(hostFile), bytes);
    std::optional<RunError> error;
    EXPECT_EQ(errorNumberOf([&] { m_folder.open(hostFile)->checkStructure(); }, &error), 3049);
    EXPECT_TRUE(error && error->description().contains(QLatin1String("bcx.mdb")));
}

TEST_F(DatabaseTest, RefusesAllUseOnceClosed) {
    const auto rows =
        m_database->openRecordset(QStringLiteral("tlyr_assoc"), RecordsetType::Dynaset);
    m_database->close();
    EXPECT_EQ(errorNumberOf([&] { insertAssoc(*m_database); }), 3420);
    EXPECT_EQ(errorNumberOf([&] { m_database->close(); }), 3420);
    EXPECT_EQ(errorNumberOf([&] { rows->requery(); }), 3420);
}

} // namespace

} // namespace tallyroom
