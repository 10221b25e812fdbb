// Work that the store does once for many rows or statements: a table replaced, files reserved, rows
// read at one state of the file.
#include "common/DateParser.h"
#include "store/Schema.h"
#include "tests/store/StoreFixture.h"

#include <QFile>
#include <SQLiteCpp/SQLiteCpp.h>
#include <random>

namespace tallyroom {

namespace {

class SharedWorkTest : public testing::Test {
protected:
    SharedWorkTest() { remake(QString()); }

    // The table "w" with numbers, zeros and Nulls in it, and with more definitions of a table.
    void remake(const QString& definitions) const {
        native(QStringLiteral("DROP TABLE IF EXISTS w"));
        native(QStringLiteral("CREATE TABLE w (k INTEGER, a INTEGER, b INTEGER, c INTEGER, d DOUBLE"
                              ", t TEXT(9)%1)")
                   .arg(definitions));
        native(QStringLiteral("INSERT INTO w VALUES (1, 5, NULL, 3, 0.5, 'x'), (2, NULL, NULL, "
                              "NULL, NULL, NULL), (3, 0, 7, -3, 2.5, '12'), (4, 9, 1, 1, 1, 'X')"));
    }

    void native(const QString& sql) const {
        SQLite::Database database(m_folder.file(mainFile).toStdString(), SQLite::OPEN_READWRITE);
        database.exec(sql.toStdString());
    }

    QStringList rows() const {
        return rowsOf(*m_database->openRecordset(QStringLiteral("Select * From w Order By k"),
                                                 RecordsetType::Snapshot));
    }

    static QString assignment(const char* column, const char* value) {
        return QStringLiteral("Update w Set [%1] = %2;")
            .arg(QString::fromLatin1(column), QString::fromLatin1(value));
    }

    DataFolder m_folder;
    std::shared_ptr<Database> m_database = m_folder.open(mainFile);
};

// A row that is given in full is kept as an Insert keeps it; nobody sees the table in between.
TEST_F(SharedWorkTest, RowsAreReplacedWithAnInsertsConversions) {
    remake(QStringLiteral(", CHECK (a < 100)"));
    const auto all = [&] { return rows(); };
    m_database->replaceRows(
        QStringLiteral("W"), {QStringLiteral("k"), QStringLiteral("A"), QStringLiteral("t")},
        {{Variant(1), Variant(2.5), Variant(u"longer than nine")},
         {Variant(u"3"), Variant(u"x"), Variant(7)},
         {Variant(4), Variant(100), Variant(u"refused")},
         {Variant(5), Variant(1e10), Variant(*Dates::parse(QStringLiteral("2/3/2020")))}});
    EXPECT_EQ(all(), QStringList({QStringLiteral("1 | 2 | Null | Null | Null | 'longer th'"),
                                  QStringLiteral("3 | Null | Null | Null | Null | '7'"),
                                  QStringLiteral("5 | Null | Null | Null | Null | '2/3/2020'")}));
    const QStringList before = all();
    for (const auto& [table, column, number] :
         {std::tuple(u"nowhere", u"k", 3192), std::tuple(u"w", u"missing", 3127)})
        EXPECT_EQ(errorNumberOf([&] {
                      m_database->replaceRows(QString::fromUtf16(table),
                                              {QString::fromUtf16(column)}, {{Variant(9)}});
                  }),
                  number);
    SQLite::Database reader(m_folder.file(mainFile).toStdString());
    SQLite::Statement reading(reader, "SELECT * FROM w");
    ASSERT_TRUE(reading.executeStep());
    const Impatience atOnce(m_database);
    EXPECT_EQ(errorNumberOf(
                  [&] { m_database->replaceRows(QStringLiteral("w"), {QStringLiteral("k")}, {}); }),
              3196);
    EXPECT_EQ(all(), before);
}

TEST_F(SharedWorkTest, ATableKeepsWhatIsWrittenOrTellsThatItDoesNot) {
    const Schema::Table& scratch = Schema::table(u"tlyrTemp");
    EXPECT_TRUE(m_database->keepsWhatIsWritten(scratch));
    EXPECT_FALSE(m_database->keepsWhatIsWritten(Schema::table(u"Employee"))) << "not in this file";
    const struct {
        const char16_t* change;
        const char16_t* back;
        bool plain;
    } changes[] = {
        {u"CREATE TRIGGER seen AFTER UPDATE ON tlyrTemp BEGIN SELECT 1; END", u"DROP TRIGGER seen",
         false},
        {u"CREATE UNIQUE INDEX one ON tlyrTemp (emp_code)", u"DROP INDEX one", false},
        {u"ALTER TABLE tlyrTemp ADD COLUMN further TEXT", u"", true},
        {u"ALTER TABLE tlyrTemp ADD COLUMN given INTEGER DEFAULT 5",
         u"ALTER TABLE tlyrTemp DROP COLUMN given", false},
        {u"ALTER TABLE tlyrTemp DROP COLUMN phone",
         u"ALTER TABLE tlyrTemp ADD COLUMN phone "
         u"TEXT(20) COLLATE NOCASE",
         false},
        {u"ALTER TABLE tlyrTemp DROP COLUMN TotalOT1",
         u"ALTER TABLE tlyrTemp ADD COLUMN TotalOT1 DOUBLE", false},
    };
    for (const auto& c : changes) {
        native(QString::fromUtf16(c.change));
        EXPECT_EQ(m_database->keepsWhatIsWritten(scratch), c.plain)
            << QString::fromUtf16(c.change).toStdString();
        native(QString::fromUtf16(c.back));
    }
    EXPECT_FALSE(m_database->keepsWhatIsWritten(scratch)) << "a column came back with another type";
}

// A reservation finds out at once what a commit would fail for.
TEST_F(SharedWorkTest, AReservationTellsWhatHindersAWrite) {
    const Impatience atOnce(m_database);
    const auto reserve = [&] {
        return errorNumberOf([&] { Transaction(m_database, TransactionKind::Reserve).commit(); });
    };
    EXPECT_EQ(reserve(), 0);
    {
        SQLite::Database other(m_folder.file(mainFile).toStdString(), SQLite::OPEN_READWRITE);
        SQLite::Statement reading(other, "SELECT * FROM w");
        ASSERT_TRUE(reading.executeStep());
        EXPECT_EQ(reserve(), 3196) << "a reader";
        reading.reset();
        other.exec("BEGIN IMMEDIATE");
        EXPECT_EQ(reserve(), 3196) << "a writer";
    }
    {
        const Transaction ours(m_database, TransactionKind::Reserve);
        SQLite::Database other(m_folder.file(mainFile).toStdString());
        EXPECT_THROW(other.execAndGet("SELECT count(*) FROM w"), SQLite::Exception);
    }
    EXPECT_FALSE(m_database->inTransaction());
    const QString file = m_folder.file(mainFile);
    ASSERT_TRUE(QFile::rename(file, file + u'1'));
    EXPECT_EQ(reserve(), 3024);
    ASSERT_TRUE(QFile::copy(file + u'1', file));
    EXPECT_EQ(reserve(), 3420) << "another file in its place";
    EXPECT_FALSE(m_database->inTransaction());
}

TEST_F(SharedWorkTest, TheMarkTellsEveryChangeAndNothingElse) {
    const auto other = m_folder.open(mainFile);
    ChangeMark last = m_database->changeMark();
    const auto changedBy = [&](const std::function<void()>& action) {
        action();
        const ChangeMark before = std::exchange(last, m_database->changeMark());
        return before != last;
    };
    EXPECT_FALSE(changedBy([&] { rows(); }));
    EXPECT_FALSE(changedBy([&] {
        const Transaction reading(m_database, TransactionKind::Read);
        rows();
    }));
    EXPECT_TRUE(changedBy([&] { m_database->execute(assignment("a", "1")); }));
    EXPECT_TRUE(changedBy([&] { other->execute(assignment("a", "2")); }));
    EXPECT_TRUE(changedBy([&] {
        const auto set = m_database->openRecordset(QStringLiteral("w"), RecordsetType::Dynaset);
        set->edit();
        set->setField(QStringLiteral("a"), Variant(77));
        set->update();
    }));
    m_database->begin(TransactionKind::Write);
    m_database->execute(assignment("a", "3"));
    last = m_database->changeMark();
    EXPECT_FALSE(changedBy([&] { m_database->commit(); }));
    EXPECT_TRUE(changedBy([&] { m_database->execute(QStringLiteral("Drop Table w;")); }));
}

TEST_F(SharedWorkTest, ReadingHoldsOneStateAndLetsGoOfIt) {
    SQLite::Database other(m_folder.file(mainFile).toStdString(), SQLite::OPEN_READWRITE);
    const auto set = m_database->openRecordset(QStringLiteral("w"), RecordsetType::Dynaset);
    {
        const Transaction reading(m_database, TransactionKind::Read);
        set->field(0);
        EXPECT_THROW(other.exec("UPDATE w SET k = k + 100"), SQLite::Exception);
        set->moveNext();
        EXPECT_EQ(shown(set->field(0)), QStringLiteral("2"));
    }
    other.exec("UPDATE w SET k = k + 100");
    set->moveFirst();
    EXPECT_EQ(shown(set->field(0)), QStringLiteral("101"));
    {
        Transaction write(m_database, TransactionKind::Write);
        {
            const Transaction inner(m_database, TransactionKind::Read);
            m_database->execute(assignment("a", "1"));
        }
        EXPECT_TRUE(m_database->inTransaction()) << "the inner one does nothing";
    }
    EXPECT_TRUE(rows().first().startsWith(QStringLiteral("101 | 5"))) << "nothing was committed";
    {
        const Transaction reading(m_database, TransactionKind::Read);
        m_database->close();
    }
}

// A list of plain codes lets an index group and sort; a further code must not change that.
TEST_F(SharedWorkTest, PlainCodesComeInTheOrderOfAllTexts) {
    native(QStringLiteral("CREATE TABLE c (code TEXT(9) COLLATE NOCASE, n INTEGER)"));
    native(QStringLiteral("CREATE INDEX by_code ON c (code, n)"));
    native(QStringLiteral("INSERT INTO c VALUES ('b2', 1), ('B2 ', 2), ('a10', 3), ('A1', 4), "
                          "('z', 5), ('12', 6), ('a1', 7), ('9', 8), ('Z1', 9)"));
    const QString codes = QStringLiteral("'a1', 'A10', 'b2', 'Z', '12', '9', 'z1'");
    const auto answer = [&](const QString& list) {
        return rowsOf(*m_database->openRecordset(
            QStringLiteral("Select code, Sum(n) As s From c Where code In (") + list +
                QStringLiteral(") And n > 0 Group By code Order By code"),
            RecordsetType::Snapshot));
    };
    EXPECT_EQ(answer(codes).size(), 7);
    EXPECT_EQ(answer(codes), answer(codes + QStringLiteral(", '\u00e9'")));
    EXPECT_EQ(answer(codes), answer(codes + QStringLiteral(", 'a-1'")));
}

TEST_F(SharedWorkTest, SumsCountANullAsZeroWithOrWithoutGroups) {
    const auto answer = [&](const QString& sql) {
        return rowsOf(*m_database->openRecordset(sql, RecordsetType::Snapshot));
    };
    const QString sum = QStringLiteral("Select Sum(iif(isnull([a]),0,[a])) As s From w ");
    EXPECT_EQ(answer(sum), QStringList(QStringLiteral("14d")));
    EXPECT_EQ(answer(sum + QStringLiteral("Where k > 9")), QStringList(QStringLiteral("Null")))
        << "no row, no sum";
    EXPECT_EQ(answer(sum + QStringLiteral("Group By t Order By t")),
              QStringList({QStringLiteral("0d"), QStringLiteral("0d"), QStringLiteral("14d")}))
        << "a group of Nulls alone is zero, and x groups with X";
    EXPECT_EQ(answer(sum + QStringLiteral("Group By t Having Sum(iif(isnull([a]),0,[a])) > 1")),
              QStringList(QStringLiteral("14d")));
    EXPECT_EQ(answer(QStringLiteral("Select k From w Where t In ('x', '12', Null) Order By k")),
              QStringList({QStringLiteral("1"), QStringLiteral("3"), QStringLiteral("4")}));
    EXPECT_EQ(answer(QStringLiteral("Select k From w Where Not t In ('x', '13')")),
              QStringList(QStringLiteral("3")));
}

// Texts compare without regard to case and blanks at their ends, byte for byte.
TEST_F(SharedWorkTest, TextsCompareAsTheirTrimmedLowerCaseForms) {
    std::mt19937 random(3);
    const auto any = [&] {
        QString text;
        for (int count = static_cast<int>(random() % 4); count > 0; --count)
            text += QStringLiteral("aAbZ[ !_1\u00e9").at(static_cast<qsizetype>(random() % 10));
        return text;
    };
    const auto plain = [](const QString& text) {
        QByteArray bytes = text.toUtf8();
        while (bytes.endsWith(' '))
            bytes.chop(1);
        return bytes.toLower();
    };
    for (int round = 0; round < 400; ++round) {
        const QString a = any();
        const QString b = any();
        const auto found = m_database->openRecordset(
            QStringLiteral("Select k From w Where k = 1 And '%1' < '%2'").arg(a, b),
            RecordsetType::Snapshot);
        ASSERT_EQ(!found->eof(), plain(a) < plain(b)) << a.toStdString() << "|" << b.toStdString();
    }
}

} // namespace

} // namespace tallyroom
