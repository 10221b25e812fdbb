// What statement files cannot hold: long lists, deep nesting, the engine's plan.
#include "tests/store/StoreFixture.h"

#include "store/sql/LikePattern.h"
#include "store/sql/Parser.h"
#include "store/sql/StatementBinder.h"
#include "store/sqlite/SqliteCatalog.h"
#include "store/sqlite/SqliteDialect.h"

#include <tuple>

namespace tallyroom {

namespace {

QString codeList(int count) {
    QStringList codes;
    for (int i = 0; i < count; ++i)
        codes << QStringLiteral("'%1'").arg(i, 5, 10, QLatin1Char('0'));
    return codes.join(u',');
}

class SqlTest : public testing::Test {
protected:
    int errorOfSelect(const QString& sql) const {
        return errorNumberOf([&] { m_database->openRecordset(sql, RecordsetType::Snapshot); });
    }

    // How the engine goes about a query.
    QStringList planOf(const QString& sql) const {
        SqliteConnection connection(m_folder.file(hostFile));
        const SqliteCatalog catalog(connection);
        const sql::Statement statement = sql::parseStatement(sql);
        const sql::BoundSelect bound =
            sql::bindSelect(catalog, std::get<sql::SelectStatement>(statement));
        SqliteQuery query(connection,
                          QStringLiteral("EXPLAIN QUERY PLAN ") + sqliteGenerator().rows(bound));
        QStringList plan;
        while (query.next())
            plan << query.text(3);
        return plan;
    }

    DataFolder m_folder;
    std::shared_ptr<Database> m_database = m_folder.open(hostFile);
};

TEST_F(SqlTest, TakesLongListsAndLongChains) {
    m_database->execute(QStringLiteral("Insert Into Employee (emp_code) Values ('04999')"));
    const QString select = QStringLiteral("Select * From Employee Where emp_code ");
    const auto rows = [&](const QString& condition) {
        return m_database->openRecordset(select + condition, RecordsetType::Dynaset)->rowCount();
    };
    EXPECT_EQ(rows(QStringLiteral("In (%1)").arg(codeList(5000))), 1);
    EXPECT_EQ(rows(QStringLiteral("Not In (%1)").arg(codeList(10000))), 0);
    EXPECT_EQ(
        rows(QStringLiteral("= 'x'") + QStringLiteral(" or emp_code = '04999'").repeated(3000)), 1);
    EXPECT_EQ(
        rows(QStringLiteral("= '04999'") + QStringLiteral(" and emp_code <> 'x'").repeated(3000)),
        1);
    EXPECT_EQ(rows(QStringLiteral("= '04999' & ''") + QStringLiteral(" & ''").repeated(20)), 1);
}

TEST_F(SqlTest, RefusesWhatNestsTooDeeply) {
    const QString one = QStringLiteral("1");
    const QString deep[] = {
        QString(5000, u'(') + one + QString(5000, u')'),
        QStringLiteral("Not ").repeated(5000) + one,
        QStringLiteral("- ").repeated(5000) + one,
        one + QStringLiteral(" + 1").repeated(5000),
        QStringLiteral("IIf(1,").repeated(500) + one + QStringLiteral(",1)").repeated(500),
        QStringLiteral("(Select ").repeated(500) + one + QString(500, u')'),
        QStringLiteral("1 Between (").repeated(30) + one + QStringLiteral(") And 2").repeated(30),
    };
    for (const QString& expression : deep)
        EXPECT_EQ(
            errorOfSelect(QStringLiteral("Select emp_code From Employee Where ") + expression),
            3360)
            << expression.left(40).toStdString();
    QString doubling = QStringLiteral("Select emp_code As a0");
    for (int i = 1; i < 200; ++i)
        doubling += QStringLiteral(", a%1 & a%1 As a%2").arg(i - 1).arg(i);
    EXPECT_EQ(errorOfSelect(doubling + QStringLiteral(" From Employee")), 3360);
}

TEST_F(SqlTest, RefusesListsThatAreTooLong) {
    for (const char16_t* list : {u"Select phone From Employee Order By phone",
                                 u"Select Count(*) From Employee Group By phone"})
        EXPECT_EQ(
            errorOfSelect(QString::fromUtf16(list) + QStringLiteral(", phone").repeated(3000)),
            3360)
            << QString::fromUtf16(list).toStdString();
}

TEST_F(SqlTest, TotalsOverAPeriodReadTheIndexOnly) {
    const auto planFor = [this](const QString& codes) {
        return planOf(
            QStringLiteral("select thist_emp, Sum(iif(isnull(t15),0,t15)) * 1440 As a, a + "
                           "Sum(tlyrDeclined2) From TimeHistory where (thist_emp in (%1)) and "
                           "(thist_record_type in ('TR','AR','HR')) and (shift_date between "
                           "#1/1/2008# and #1/14/2008#) group by thist_emp order by thist_emp")
                .arg(codes));
    };
    const QString search = QStringLiteral("SEARCH t1 USING COVERING INDEX TimeHistory_Totals "
                                          "(thist_emp=? AND shift_date>? AND shift_date<?)");
    const QString sorting = QStringLiteral("USE TEMP B-TREE FOR GROUP BY");
    const QStringList plain = planFor(codeList(3000));
    EXPECT_TRUE(plain.contains(search));
    EXPECT_FALSE(plain.contains(sorting)) << "the index has the order of plain codes";
    const QStringList joined = planFor(codeList(3000) + QStringLiteral(", '\u00e9'"));
    EXPECT_TRUE(joined.contains(search));
    EXPECT_GT(joined.indexOf(sorting), joined.indexOf(QStringLiteral("SCAN t2")))
        << "sorts more than the totals";
}

TEST_F(SqlTest, SameTextsAreFoundByTheIndex) {
    const struct {
        const char16_t* condition;
        const char16_t* search;
    } cases[] = {
        {u"emp_code = 'x'", u"SEARCH t1 USING INDEX Employee_Code (emp_code=?)"},
        {u"emp_code = 'É'", u"SEARCH t1 USING INDEX Employee_Code (emp_code=?)"},
        {u"emp_code In ('1', '2', '3', '4', 'É')",
         u"SEARCH t1 USING INDEX Employee_Code (emp_code=?)"},
        {u"emp_code In (Select Emp_Code From Emp_Qualifications)",
         u"SEARCH t1 USING INDEX Employee_Code (emp_code=?)"},
        {u"1 = (Select Count(*) From Emp_Qualifications q Where q.Emp_Code = Employee.emp_code)",
         u"SEARCH t2 USING COVERING INDEX Emp_Qualifications_Employee (Emp_Code>? AND Emp_Code<?)"},
        {u"1 = (Select Count(*) From Emp_Qualifications q Where Employee.emp_code = q.Emp_Code)",
         u"SEARCH t2 USING COVERING INDEX Emp_Qualifications_Employee (Emp_Code>? AND Emp_Code<?)"},
    };
    for (const auto& c : cases) {
        const QString condition = QString::fromUtf16(c.condition);
        const QString plan =
            planOf(QStringLiteral("Select emp_name From Employee Where ") + condition).join(u'\n');
        EXPECT_TRUE(plan.contains(QString::fromUtf16(c.search)))
            << condition.toStdString() << ": " << plan.toStdString();
    }
}

TEST(LikePattern, Matches) {
    const struct {
        const char16_t* text;
        const char16_t* pattern;
        bool matches;
    } cases[] = {{u"", u"*", true},
                 {u"", u"?", false},
                 {u"abc", u"A*C", true},
                 {u"abc", u"a*b", false},
                 {u"a1", u"a#", true},
                 {u"ab", u"a#", false},
                 {u"b", u"[a-c]", true},
                 {u"d", u"[!a-c]", true},
                 {u"a*b", u"a[*]b", true},
                 {u"axb", u"a[*]b", false},
                 {u"x", u"[", false},
                 {u"aXbXc", u"*x*c", true},
                 {u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaab", u"*a*a*a*a*a*a*a*a*c", false},
                 {u"É", u"é", true}};
    for (const auto& entry : cases)
        EXPECT_EQ(matchesLike(QStringView(entry.text), QStringView(entry.pattern)), entry.matches)
            << QString::fromUtf16(entry.text).toStdString() << " like "
            << QString::fromUtf16(entry.pattern).toStdString();
}

// So that an engine reads and plans them once.
TEST_F(SqlTest, SameTextsServeAllValues) {
    SqliteConnection connection(m_folder.file(hostFile));
    const SqliteCatalog catalog(connection);
    const auto native = [&](const char* changes) {
        const sql::Statement statement = sql::parseStatement(
            QStringLiteral("Update Employee Set ") + QString::fromUtf8(changes));
        return sqliteGenerator().updateRows(
            sql::bindUpdate(catalog, std::get<sql::UpdateStatement>(statement)));
    };
    constexpr std::tuple<const char*, const char*, bool> cases[] = {
        {"emp_name = 'a', sendate = #1/1/2020# Where Seniority = 1.5 Or emp_code = 'b'",
         "emp_name = 'c', sendate = #2/1/2020# Where Seniority = 2.5 Or emp_code = 'd'", true},
        {"emp_name = 'a' Where emp_code Like 'b*'", "emp_name = 'a' Where emp_code Like 'c*'",
         false},
        {"emp_name = 'a' Where Seniority In (1, 2)", "emp_name = 'a' Where Seniority In (1, 3)",
         false},
        {"Seniority = (Select Count(*) + 1 From Shift)",
         "Seniority = (Select Count(*) + 2 From Shift)", false},
        {"emp_name = 'a'", "emp_name = Null", false},
    };
    for (const auto& [one, other, same] : cases)
        EXPECT_EQ(native(one).text == native(other).text, same) << one;
    EXPECT_EQ(native(std::get<0>(cases[0])).values.size(), 4U);
}

} // namespace

} // namespace tallyroom
