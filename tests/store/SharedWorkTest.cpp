// Work that the store does once for many: composed updates, changes that it can rule out, rows read
// at one state of the file. None of it may be told from the plain way.
#include "tests/store/StoreFixture.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <random>
#include <span>

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

// The random statements of a chain, in which later ones read what earlier ones set.
QStringList randomChain(std::mt19937& random) {
    static const char16_t* const columns[] = {u"a", u"b", u"c"};
    static const char16_t* const values[] = {u"%1 * 1.5",
                                             u"%1 + %2",
                                             u"iif(isnull(%1),0,%1) + iif(isnull(%2),0,%2)",
                                             u"- %1",
                                             u"%1 * 0.5 - d",
                                             u"%1 * 3000000000",
                                             u"%1 - 2 * d",
                                             u"iif(isnull(%1),%2,%1)"};
    static const char16_t* const others[] = {u"iif(%1 > 2,%2,1)", u"%1 / 2"};
    const auto any = [&](std::span<const char16_t* const> list) {
        return QString::fromUtf16(list[random() % list.size()]);
    };
    QStringList chain;
    for (int count = 6; count > 0; --count) {
        QString where;
        if (random() % 4 == 0)
            where = QStringLiteral(" Where a = Null");
        if (random() % 40 == 0)
            where = QStringLiteral(" Where b = Null or c > 1");
        chain << QStringLiteral("Update w Set [") + any(columns) + QStringLiteral("] = ") +
                     (random() % 20 == 0 ? any(others) : any(values))
                         .replace(QStringLiteral("%1"), any(columns))
                         .replace(QStringLiteral("%2"), any(columns)) +
                     where + u';';
    }
    return chain;
}

TEST_F(SharedWorkTest, AChainOfUpdatesLeavesWhatItsStatementsLeaveOneByOne) {
    std::mt19937 random(7);
    int together = 0;
    for (int round = 0; round < 120; ++round) {
        // Rows that cannot be kept are passed over by the statement that meets them alone.
        const QString definitions[] = {QString(), QStringLiteral(", CHECK (a < 10)"),
                                       QStringLiteral(", UNIQUE (b)")};
        const QString& definition = definitions[static_cast<std::size_t>(round) % 3];
        const QStringList chain = randomChain(random);
        remake(definition);
        m_database->beginBatch();
        for (const QString& statement : chain)
            m_database->execute(statement);
        m_database->commitBatch();
        const QStringList expected = rows();
        remake(definition);
        if (m_database->executeAsOne(chain)) {
            ++together;
        } else {
            qsizetype done = 0;
            m_database->executeAll(chain, done);
            EXPECT_EQ(done, chain.size());
        }
        ASSERT_EQ(rows(), expected) << chain.join(u'\n').toStdString();
    }
    EXPECT_GT(together, 10);
}

// Gives each row new values in all number columns.
void renumber(Recordset& rows) {
    for (int n = 0; !rows.eof(); rows.moveNext(), ++n) {
        rows.edit();
        rows.setField(0, n == 2 ? Variant::null() : Variant(n * 7));
        rows.setField(1, Variant(3 - n));
        rows.setField(2, Variant(n));
        rows.setField(3, Variant(n * 0.5));
        rows.update();
    }
}

TEST_F(SharedWorkTest, EditsThatExpectAChainLeaveWhatItLeaves) {
    const QString edited = QStringLiteral("Select a, b, c, d From w Order By k");
    std::mt19937 random(11);
    int withTheEdits = 0;
    for (int round = 0; round < 90; ++round) {
        const QString definition = round % 3 == 0 ? QStringLiteral(", CHECK (a < 10)") : QString();
        const QStringList chain = randomChain(random);
        QStringList expected;
        for (const bool expecting : {false, true}) {
            remake(definition);
            const Batch batch(m_database);
            const auto set = m_database->openRecordset(edited, RecordsetType::Dynaset);
            if (expecting)
                set->expectUpdates(chain);
            try {
                renumber(*set);
            } catch (const RunError&) { // of the rule, on the plain edit
            }
            qsizetype done = 0;
            if (set->hasLeftExpected())
                ++withTheEdits;
            else
                m_database->executeAll(chain, done);
            if (expecting) {
                EXPECT_EQ(rows(), expected) << chain.join(u'\n').toStdString();
            }
            expected = rows();
        }
    }
    EXPECT_GT(withTheEdits, 10);
}

TEST_F(SharedWorkTest, AFailingUpdateLeavesTheOnesBeforeItDone) {
    const QStringList chain{assignment("a", "1"), assignment("b", "[a] + 1"),
                            assignment("missing", "2"), assignment("c", "4")};
    qsizetype done = 0;
    EXPECT_EQ(errorNumberOf([&] { m_database->executeAll(chain, done); }), 3061);
    EXPECT_EQ(done, 2);
    EXPECT_TRUE(rows().first().startsWith(QStringLiteral("1 | 1 | 2 | 3")));
    done = 3;
    m_database->executeAll(chain, done);
    EXPECT_EQ(done, 4);
    EXPECT_TRUE(rows().first().startsWith(QStringLiteral("1 | 1 | 2 | 4")));
}

TEST_F(SharedWorkTest, WhatTriggersRulesOrTextsCouldTellRunsOneByOne) {
    const QStringList chain{assignment("a", "[b] + 1"), assignment("c", "[a] + 1")};
    EXPECT_TRUE(m_database->executeAsOne(chain));
    EXPECT_FALSE(m_database->executeAsOne({assignment("t", "'y'"), assignment("a", "1")}));
    EXPECT_FALSE(m_database->executeAsOne({chain[0], QStringLiteral("Delete * From w;")}));
    EXPECT_FALSE(m_database->executeAsOne({chain[0], QStringLiteral("Update tlyrTemp Set "
                                                                    "T15Hours = 1;")}));
    native(QStringLiteral("CREATE UNIQUE INDEX one ON w (a)"));
    EXPECT_FALSE(m_database->executeAsOne(chain));
    native(QStringLiteral("DROP INDEX one"));
    EXPECT_TRUE(m_database->executeAsOne(chain));
    native(QStringLiteral("CREATE TRIGGER seen AFTER UPDATE ON w BEGIN SELECT 1; END"));
    EXPECT_FALSE(m_database->executeAsOne(chain));
    m_database->close();
    EXPECT_EQ(errorNumberOf([&] { m_database->executeAsOne(chain); }), 3420);
}

TEST_F(SharedWorkTest, OnlyRowsThatChangeAreWritten) {
    const QStringList chain{assignment("a", "iif(isnull([b]),0,[b])"), assignment("c", "[a] * 2")};
    const auto other = m_folder.open(mainFile);
    EXPECT_TRUE(m_database->executeAsOne(chain));
    const ChangeMark before = other->changeMark();
    EXPECT_TRUE(m_database->executeAsOne(chain));
    EXPECT_EQ(other->changeMark(), before) << "nothing reached the file";
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
    EXPECT_TRUE(changedBy([&] { m_database->execute(assignment("a", "1")); }));
    EXPECT_TRUE(changedBy([&] { other->execute(assignment("a", "2")); }));
    EXPECT_TRUE(changedBy([&] {
        const auto set = m_database->openRecordset(QStringLiteral("w"), RecordsetType::Dynaset);
        set->edit();
        set->setField(QStringLiteral("a"), Variant(77));
        set->update();
    }));
    m_database->beginBatch();
    m_database->execute(assignment("a", "3"));
    last = m_database->changeMark();
    EXPECT_FALSE(changedBy([&] { m_database->commitBatch(); }));
    EXPECT_TRUE(changedBy([&] { m_database->execute(QStringLiteral("Drop Table w;")); }));
}

TEST_F(SharedWorkTest, ReadingHoldsOneStateAndLetsGoOfIt) {
    SQLite::Database other(m_folder.file(mainFile).toStdString(), SQLite::OPEN_READWRITE);
    const auto set = m_database->openRecordset(QStringLiteral("w"), RecordsetType::Dynaset);
    {
        const Reading reading(m_database);
        set->field(0);
        EXPECT_THROW(other.exec("UPDATE w SET k = k + 100"), SQLite::Exception);
        set->moveNext();
        EXPECT_EQ(shown(set->field(0)), QStringLiteral("2"));
    }
    other.exec("UPDATE w SET k = k + 100");
    set->moveFirst();
    EXPECT_EQ(shown(set->field(0)), QStringLiteral("101"));
    m_database->beginBatch();
    {
        const Reading reading(m_database);
        m_database->execute(assignment("a", "1"));
    }
    EXPECT_TRUE(m_database->inBatch()) << "inside a batch a reading does nothing";
    m_database->commitBatch();
    {
        const Reading reading(m_database);
        m_database->close();
    }
}

TEST_F(SharedWorkTest, AnEditInABatchSeesWhatTheBatchHasDone) {
    const auto set = m_database->openRecordset(QStringLiteral("w"), RecordsetType::Dynaset);
    EXPECT_EQ(shown(set->field(1)), QStringLiteral("5"));
    native(QStringLiteral("UPDATE w SET a = 6"));
    m_database->beginBatch();
    set->edit();
    EXPECT_EQ(shown(set->field(1)), QStringLiteral("6")) << "read before the batch";
    m_database->execute(assignment("a", "7"));
    set->edit();
    EXPECT_EQ(shown(set->field(1)), QStringLiteral("7")) << "changed in the batch";
    set->setField(2, Variant(1));
    set->update();
    set->edit();
    set->setField(3, Variant(2)); // other columns than before
    set->update();
    m_database->commitBatch();
    EXPECT_TRUE(rows().first().startsWith(QStringLiteral("1 | 7 | 1 | 2")));
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
