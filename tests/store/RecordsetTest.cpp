#include "tests/store/StoreFixture.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace tallyroom {

namespace {

class RecordsetTest : public testing::Test {
protected:
    RecordsetTest() {
        for (const QString& code : {QStringLiteral("C"), QStringLiteral("a"), QStringLiteral("B")})
            m_database->execute(
                QStringLiteral(
                    "Insert Into tlyrTemp (emp_code, T15Hours, phone) Values ('%1', 10, 'p')")
                    .arg(code));
    }

    std::shared_ptr<Recordset> open(const char16_t* sql,
                                    RecordsetType type = RecordsetType::Dynaset) const {
        return m_database->openRecordset(QString::fromUtf16(sql), type);
    }
    void executeElsewhere(const char16_t* sql) const {
        m_folder.open(mainFile)->execute(QString::fromUtf16(sql));
    }
    static QString code(const Recordset& rows) {
        return rows.field(QStringLiteral("EMP_CODE")).toText();
    }

    const QString m_code = QStringLiteral("emp_code");
    const QString m_hours = QStringLiteral("T15Hours");
    DataFolder m_folder;
    std::shared_ptr<Database> m_database = m_folder.open(mainFile);
};

TEST_F(RecordsetTest, MovesFromEndToEndAndFailsBeyond) {
    for (const RecordsetType type : {RecordsetType::Dynaset, RecordsetType::Snapshot}) {
        const auto rows = open(u"Select emp_code From tlyrTemp Order By emp_code", type);
        EXPECT_EQ(rows->rowCount(), 3);
        EXPECT_EQ(code(*rows), QStringLiteral("a"));
        rows->movePrevious();
        EXPECT_TRUE(rows->bof());
        EXPECT_EQ(errorNumberOf([&] { rows->movePrevious(); }), 3021);
        EXPECT_EQ(errorNumberOf([&] { rows->field(0); }), 3021);
        rows->moveLast();
        EXPECT_EQ(code(*rows), QStringLiteral("C"));
        rows->moveNext();
        EXPECT_TRUE(rows->eof());
        EXPECT_EQ(errorNumberOf([&] { rows->moveNext(); }), 3021);
        rows->moveFirst();
        EXPECT_EQ(code(*rows), QStringLiteral("a"));
    }
    const auto none = open(u"Select * From tlyrTemp Where emp_code = 'x'");
    EXPECT_TRUE(none->bof() && none->eof());
    EXPECT_EQ(errorNumberOf([&] { none->moveFirst(); }), 3021);
    EXPECT_EQ(errorNumberOf([&] { none->edit(); }), 3021);
}

TEST_F(RecordsetTest, ANumberThatIsNoValueOfItsColumnStaysANumber) {
    SQLite::Database(m_folder.file(mainFile).toStdString(), SQLite::OPEN_READWRITE)
        .exec("UPDATE tlyrTemp SET sendate = -1e308, T15Hours = 1e300");
    for (const RecordsetType type : {RecordsetType::Dynaset, RecordsetType::Snapshot}) {
        const auto rows = open(u"Select sendate, T15Hours, sendate + 1 From tlyrTemp", type);
        EXPECT_EQ(rowsOf(*rows).value(0), QStringLiteral("-1E+308d | 1E+300d | Null"));
        rows->moveFirst();
        EXPECT_EQ(errorNumberOf([&] { rows->field(0).toDate(); }), 6);
    }
}

TEST_F(RecordsetTest, FixesTheRowsOfADynasetButReadsTheirValuesAnew) {
    const auto rows = open(u"Select * From tlyrTemp Where T15Hours = 10");
    const auto copy = open(u"Select * From tlyrTemp", RecordsetType::Snapshot);
    EXPECT_EQ(rows->field(m_hours).toLong(), 10);
    executeElsewhere(u"Update tlyrTemp Set T15Hours = 99");
    executeElsewhere(u"Insert Into tlyrTemp (emp_code, T15Hours) Values ('new', 10)");
    executeElsewhere(u"Delete From tlyrTemp Where emp_code = 'a'");
    EXPECT_EQ(rows->field(m_hours).toLong(), 10);
    rows->moveFirst();
    EXPECT_EQ(rows->field(m_hours).toLong(), 99);
    rows->moveNext();
    EXPECT_EQ(errorNumberOf([&] { rows->field(m_hours); }), 3167);
    EXPECT_EQ(errorNumberOf([&] { rows->remove(); }), 3167);
    rows->moveNext();
    EXPECT_EQ(code(*rows), QStringLiteral("B"));
    rows->requery();
    EXPECT_EQ(rowsOf(*open(u"Select emp_code From tlyrTemp")),
              (QStringList{QStringLiteral("'C'"), QStringLiteral("'B'"), QStringLiteral("'new'")}));
    EXPECT_EQ(rows->rowCount(), 1);
    EXPECT_EQ(code(*rows), QStringLiteral("new"));
    EXPECT_EQ(copy->rowCount(), 3);
    EXPECT_EQ(copy->field(m_hours).toLong(), 10);
}

TEST_F(RecordsetTest, EditsTheCurrentRowOnUpdateOnly) {
    const auto rows =
        open(u"Select emp_code, T15Hours, T15Hours * 2 As Twice From tlyrTemp Order By emp_code");
    EXPECT_EQ(errorNumberOf([&] { rows->setField(m_hours, Variant(1)); }), 3020);
    EXPECT_EQ(errorNumberOf([&] { rows->update(); }), 3020);
    EXPECT_EQ(errorNumberOf([&] { rows->cancelUpdate(); }), 3020);
    rows->edit();
    rows->setField(m_hours, Variant(479.99999));
    EXPECT_EQ(rows->field(1).toLong(), 480);
    rows->moveFirst();
    EXPECT_EQ(rows->field(1).toLong(), 10);
    rows->edit();
    rows->setField(1, Variant(67.5));
    rows->update();
    EXPECT_EQ(rows->field(1).toLong(), 68);
    EXPECT_EQ(rows->field(2).toLong(), 136);
    rows->edit();
    std::optional<RunError> error;
    EXPECT_EQ(errorNumberOf([&] { rows->setField(m_hours, Variant(u"many")); }, &error), 3421);
    EXPECT_EQ(error->source(), QStringLiteral("DAO.Field"));
    EXPECT_EQ(errorNumberOf([&] { rows->setField(m_code, Variant(u"1234567890")); }), 3163);
    EXPECT_EQ(errorNumberOf([&] { rows->setField(2, Variant(1)); }), 3164);
    EXPECT_EQ(errorNumberOf([&] { rows->setField(QStringLiteral("none"), Variant(1)); }, &error),
              3265);
    EXPECT_EQ(error->source(), QStringLiteral("DAO.Fields"));
    rows->cancelUpdate();
    EXPECT_EQ(rowsOf(*open(u"Select emp_code, T15Hours From tlyrTemp")),
              (QStringList{QStringLiteral("'C' | 10"), QStringLiteral("'a' | 68"),
                           QStringLiteral("'B' | 10")}));
}

TEST_F(RecordsetTest, AddsAtTheEndAndStaysWhereItWas) {
    const auto rows = open(u"Select emp_code, sendate, Seniority From tlyrTemp Order By emp_code");
    rows->addNew();
    EXPECT_TRUE(rows->field(0).isNull());
    rows->setField(0, Variant(u"0"));
    rows->setField(1, Variant(u"3/4/1990 1:02:03 PM"));
    rows->setField(2, Variant::null());
    rows->update();
    EXPECT_EQ(code(*rows), QStringLiteral("a"));
    EXPECT_EQ(rows->rowCount(), 4);
    rows->moveLast();
    EXPECT_EQ(rowsOf(*rows), QStringList{QStringLiteral("'0' | #3/4/1990 1:02:03 PM# | Null")});
    rows->addNew();
    rows->update();
    EXPECT_TRUE(rows->eof());
    rows->moveLast();
    EXPECT_TRUE(rows->field(0).isNull());
}

TEST_F(RecordsetTest, RemovesTheCurrentRowAndGoesOnBehindIt) {
    const auto rows = open(u"Select * From tlyrTemp Order By emp_code");
    rows->moveNext();
    rows->remove();
    EXPECT_EQ(rows->rowCount(), 2);
    EXPECT_EQ(errorNumberOf([&] { rows->field(0); }), 3167);
    EXPECT_EQ(errorNumberOf([&] { rows->remove(); }), 3167);
    rows->moveNext();
    EXPECT_EQ(code(*rows), QStringLiteral("C"));
    rows->movePrevious();
    EXPECT_EQ(code(*rows), QStringLiteral("a"));
    for (rows->moveFirst(); !rows->eof(); rows->moveNext())
        rows->remove();
    EXPECT_TRUE(rows->bof() && rows->eof());
    EXPECT_EQ(open(u"tlyrTemp")->rowCount(), 0);
}

TEST_F(RecordsetTest, ReportsRowsThatCannotBeKept) {
    const auto host = m_folder.open(hostFile);
    host->execute(QStringLiteral("Insert Into Employee (emp_code) Values ('1')"));
    const auto rows = host->openRecordset(QStringLiteral("Employee"), RecordsetType::Dynaset);
    rows->addNew();
    rows->setField(m_code, Variant(u"1"));
    std::optional<RunError> error;
    EXPECT_EQ(errorNumberOf([&] { rows->update(); }, &error), 3022);
    EXPECT_EQ(error->source(), QStringLiteral("DAO.Recordset"));
    rows->setField(m_code, Variant(u"2"));
    rows->update();
    EXPECT_EQ(rows->rowCount(), 2);
}

TEST_F(RecordsetTest, FindsTheFirstMatchInTheOrderOfTheSet) {
    m_database->execute(QStringLiteral("Insert Into tlyrTemp (emp_code) Values ('Ä1')"));
    const char16_t* statements[] = {u"Select emp_code, T15Hours, phone As tel From tlyrTemp Where "
                                    u"emp_code <> 'C' Order By emp_code Desc",
                                    u"Select Distinct emp_code, T15Hours, phone As tel From "
                                    u"tlyrTemp Where emp_code <> 'C' Order By emp_code Desc"};
    for (const char16_t* statement : statements) {
        const auto rows = open(statement);
        rows->findFirst(QStringLiteral("[T15Hours] = 10"));
        EXPECT_FALSE(rows->noMatch());
        EXPECT_EQ(code(*rows), QStringLiteral("B"));
        rows->findFirst(QStringLiteral("Emp_Code = 'A' And tel = 'P'"));
        EXPECT_EQ(code(*rows), QStringLiteral("a"));
        rows->findFirst(QStringLiteral("emp_code = 'ä1 '"));
        EXPECT_EQ(code(*rows), QStringLiteral("Ä1"));
        rows->findFirst(QStringLiteral("emp_code = 'C'")); // in the table, not in the set
        EXPECT_TRUE(rows->noMatch());
        EXPECT_FALSE(rows->eof());
        EXPECT_EQ(errorNumberOf([&] { rows->field(0); }), 3021);
        EXPECT_EQ(errorNumberOf([&] { rows->findFirst(QStringLiteral("emp_code = 'O'Brien'")); }),
                  3077);
        EXPECT_EQ(errorNumberOf([&] { rows->findFirst(QStringLiteral("phone = 'p'")); }), 3070);
        rows->findFirst(QStringLiteral("[emp_code] = 'b'"));
        EXPECT_FALSE(rows->noMatch());
    }
    const auto rows = open(u"tlyrTemp");
    rows->findFirst(QStringLiteral("emp_code = 'a'"));
    rows->remove();
    rows->addNew();
    rows->setField(m_code, Variant(u"a"));
    rows->update();
    rows->findFirst(QStringLiteral("emp_code = 'a'"));
    EXPECT_FALSE(rows->noMatch());
    rows->moveNext();
    EXPECT_TRUE(rows->eof());
}

TEST_F(RecordsetTest, SortsOnlyWhatIsOpenedFromIt) {
    for (const RecordsetType type : {RecordsetType::Dynaset, RecordsetType::Snapshot}) {
        const auto rows = open(u"Select emp_code As who From tlyrTemp Where emp_code <> 'C'", type);
        rows->setSort(QStringLiteral("[who] DESC"));
        EXPECT_EQ(rows->field(0).toText(), QStringLiteral("a"));
        const auto sorted = rows->openRecordset();
        EXPECT_EQ(rowsOf(*sorted), (QStringList{QStringLiteral("'B'"), QStringLiteral("'a'")}));
        sorted->requery();
        EXPECT_EQ(sorted->field(0).toText(), QStringLiteral("B"));
        for (const char16_t* bad : {u"nobody", u"who,", u"who Up", u"who; x"}) {
            rows->setSort(QString::fromUtf16(bad));
            EXPECT_NE(errorNumberOf([&] { rows->openRecordset(); }), 0)
                << QString::fromUtf16(bad).toStdString();
        }
    }
}

TEST_F(RecordsetTest, RefusesChangesToCopiesAndAnyUseOnceClosed) {
    for (const char16_t* statement :
         {u"Select Count(*) From tlyrTemp", u"Select Distinct phone From tlyrTemp"}) {
        const auto rows = open(statement);
        EXPECT_EQ(errorNumberOf([&] { rows->edit(); }), 3027);
        EXPECT_EQ(errorNumberOf([&] { rows->addNew(); }), 3027);
        EXPECT_EQ(errorNumberOf([&] { rows->remove(); }), 3027);
    }
    for (const RecordsetType type : {RecordsetType::Dynaset, RecordsetType::Snapshot}) {
        const auto rows = open(u"tlyrTemp", type);
        rows->close();
        EXPECT_EQ(errorNumberOf([&] { rows->eof(); }), 3420);
        EXPECT_EQ(errorNumberOf([&] { rows->field(0); }), 3420);
        EXPECT_EQ(errorNumberOf([&] { rows->edit(); }), 3420);
        EXPECT_EQ(errorNumberOf([&] { rows->close(); }), 3420);
    }
}

TEST_F(RecordsetTest, HoldsNoLockWhileItIsOpen) {
    const auto rows = open(u"tlyrTemp");
    const auto copy = open(u"Select emp_code, Count(*) From tlyrTemp Group By emp_code");
    rows->field(0);
    rows->findFirst(QStringLiteral("emp_code = 'B'"));
    copy->findFirst(QStringLiteral("emp_code = 'B'"));
    rows->edit();
    SQLite::Database other(m_folder.file(mainFile).toStdString(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN EXCLUSIVE");
    other.exec("DROP TABLE tlyrTemp");
    other.exec("COMMIT");
    EXPECT_EQ(errorNumberOf([&] { rows->requery(); }), 3078);
    EXPECT_EQ(errorNumberOf([&] {
                  rows->moveFirst();
                  rows->field(0);
              }),
              3078);
    EXPECT_EQ(code(*copy), QStringLiteral("B"));
}

} // namespace

} // namespace tallyroom
