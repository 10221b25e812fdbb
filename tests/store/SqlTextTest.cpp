// Values in statements: what they stand for, and what they cannot turn a statement into.
#include "store/SqlText.h"
#include "tests/store/StoreFixture.h"

namespace tallyroom {

namespace {

struct Raised {
    int number;
    QString description;
    QString source;
    friend bool operator==(const Raised&, const Raised&) = default;
};

template<class Command>
Raised raisedBy(const Command& command) {
    std::optional<RunError> error;
    errorNumberOf(command, &error);
    return error ? Raised{error->number(), error->description(), error->source()} : Raised{};
}

// A single employee code in quotes is what the statements hold everywhere.
TEST(SqlText, RefusesATextAsTheStatementThatItBreaksDoes) {
    const DataFolder folder;
    const auto database = folder.open(hostFile);
    const auto rows = database->openRecordset(QStringLiteral("Select * from [Employee];"),
                                              RecordsetType::Dynaset);
    for (const QString& text : {QStringLiteral("O'Neil"), QString(QChar(QChar::Null)),
                                QStringLiteral("a") + QChar(QChar::Null) + QStringLiteral("b")}) {
        const QString joined = QLatin1Char('\'') + text + QLatin1Char('\'');
        const Raised inQuery = raisedBy([&] {
            database->openRecordset(
                QStringLiteral("Select * from [Employee] where [emp_code] in (") + joined +
                    QStringLiteral(");"),
                RecordsetType::Snapshot);
        });
        const Raised refused = raisedBy([&] { SqlText::literal(text); });
        EXPECT_EQ(refused.number, inQuery.number);
        EXPECT_EQ(refused.source, inQuery.source);
        EXPECT_EQ(refused.description.section(u'\'', 0, 0),
                  inQuery.description.section(u'\'', 0, 0));
        EXPECT_EQ(raisedBy([&] { SqlText::criterion(text); }),
                  raisedBy([&] { rows->findFirst(QStringLiteral("[emp_code] = ") + joined); }));
    }
    for (const char16_t* text : {u"'or'a'='a", u"x') or True or ('a'='b", u"''", u"'"}) {
        EXPECT_EQ(errorNumberOf([&] { SqlText::literal(QString::fromUtf16(text)); }), 3075);
        EXPECT_EQ(errorNumberOf([&] { SqlText::criterion(QString::fromUtf16(text)); }), 3077);
    }
}

TEST(SqlText, GivesWhatTheStatementsWrite) {
    EXPECT_EQ(SqlText::literal(QStringLiteral(" a\"#[]\\% ")), QStringLiteral("' a\"#[]\\% '"));
    EXPECT_EQ(SqlText::literal(QString()), QStringLiteral("''"));
    EXPECT_EQ(SqlText::criterion(QStringLiteral("E1")), QStringLiteral("'E1'"));
    EXPECT_EQ(SqlText::literal(Date{39448.75}), QStringLiteral("#1/1/2008 6:00:00 PM#"));
    EXPECT_EQ(SqlText::literal(Date{}), QStringLiteral("#12:00:00 AM#"));
    EXPECT_EQ(SqlText::name(QStringLiteral("Now")), QStringLiteral("[Now]"));
    for (const char16_t* column : {u"", u" ", u"a] = 1) or ([b", u"[", u"]"})
        EXPECT_EQ(errorNumberOf([&] { SqlText::name(QString::fromUtf16(column)); }), 3126);
}

} // namespace

} // namespace tallyroom
