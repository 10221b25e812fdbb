// The wrapper around the server's library, on a server of its own.
#include "store/postgres/PostgresSession.h"
#include "tests/store/StoreFixture.h"
#include "tests/support/PostgresCluster.h"

#include <csignal>
#include <libpq-fe.h>
#include <tuple>

namespace tallyroom {

namespace {

using sql::ValueType;

QString utf8(const char* text) {
    return QString::fromUtf8(text);
}

PostgresStatement statement(const char* native, const PostgresParameters& parameters = {}) {
    return {utf8(native), parameters};
}

PostgresStatement insert(int key) {
    return statement("INSERT INTO s.t VALUES ($1, 'x')", {Variant(key)});
}

class PostgresConnectionTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (const QString reason = PostgresCluster::skipReason(); !reason.isEmpty())
            GTEST_SKIP() << reason.toStdString();
        natively("DROP SCHEMA IF EXISTS s CASCADE; CREATE SCHEMA s;"
                 "CREATE TABLE s.t (k bigint PRIMARY KEY, a varchar(5) COLLATE \"C\" NOT NULL,"
                 " b smallint CHECK (b < 9))");
    }

    static void natively(const char* sql) {
        PostgresCluster::shared().execute(utf8("postgres"), utf8(sql));
    }
    static PostgresConnection connect(const char* change = "") {
        return {PostgresCluster::shared().conninfo() + utf8(change), utf8("the site")};
    }
    static QString one(PostgresConnection& connection, const char* sql) {
        return connection.run(utf8(sql)).text(0, 0);
    }
    // The keys in the table, in their order of entry.
    static QString keys(PostgresConnection& connection) {
        return one(connection, "SELECT string_agg(k::text, ' ') FROM s.t");
    }
    // "number: text", or nothing.
    template<class Command>
    static std::string raisedBy(const Command& command) {
        std::optional<RunError> error;
        return errorNumberOf(command, &error) == 0 ? std::string() : error->what();
    }
};

TEST_F(PostgresConnectionTest, ReadsValuesByTheTypeOfTheColumn) {
    constexpr std::tuple<const char*, ValueType, const char16_t*> cases[] = {
        {"-1::smallint", ValueType::Boolean, u"True"},
        {"false", ValueType::Null, u"False"},
        {"true", ValueType::Long, u"-1"},
        {"2147483648::bigint", ValueType::Long, u"2147483648d"},
        {"7::int", ValueType::Null, u"7"},
        {"2.5::float8", ValueType::Long, u"2"},
        {"timestamp(0) '1899-12-30 06:00:00'", ValueType::Date, u"#6:00:00 AM#"},
        {"timestamp '0099-01-01'", ValueType::Date, u"'0099-01-01 00:00:00'"},
        {"timestamp 'infinity'", ValueType::Date, u"'infinity'"},
        {"39448.75::float8", ValueType::Date, u"#1/1/2008 6:00:00 PM#"},
    };
    PostgresConnection connection = connect();
    for (const auto& [native, type, value] : cases)
        EXPECT_EQ(shown(connection.run(utf8("SELECT ") + utf8(native)).value(0, 0, type)),
                  QString::fromUtf16(value))
            << native;
}

TEST_F(PostgresConnectionTest, ReadsWhatItHasWritten) {
    PostgresConnection connection = connect();
    connection.run(utf8("CREATE TABLE s.v (n smallint, l bigint, d float8, m timestamp(0), c text,"
                        " b bytea)"));
    constexpr ValueType types[] = {ValueType::Boolean, ValueType::Long, ValueType::Double,
                                   ValueType::Date,    ValueType::Text, ValueType::Text};
    const std::vector<Row> rows = {
        {Variant(true), Variant(-5), Variant(0.1 + 0.2), Variant(Date{-1.25}),
         Variant(utf8("\\N\t\"{,}\r\n'é\U0001F600\x01 ")), Variant(QByteArray("\0\\\xff", 3))},
        {Variant(false), Variant::null(), Variant(5e-324), Variant(), Variant(u""),
         Variant(QByteArray())}};
    const auto before = connection.roundTrips();
    connection.copyRows(utf8("s.v"), rows);
    std::vector<PostgresStatement> inserts;
    for (const Row& row : rows)
        inserts.push_back(statement("INSERT INTO s.v VALUES ($1, $2, $3, $4, $5, $6)",
                                    PostgresParameters(row.begin(), row.end())));
    EXPECT_EQ(connection.runAll(inserts).back().changedRows(), 1);
    EXPECT_EQ(connection.roundTrips() - before, 3);
    const auto kept = connection.run(utf8("SELECT * FROM s.v"));
    for (int i = 0; i < 4; ++i) {
        for (int column = 0; column < 6; ++column) {
            const Variant& written = rows[i % 2][column];
            const Variant read = kept.value(i, column, types[column]);
            const bool isNull = written.isNull() || written.isEmpty();
            EXPECT_TRUE(isNull ? read.isNull() : read.sameValue(written)) << i << ' ' << column;
        }
    }
    const QStringList texts = {utf8("a\"\\,{}"), QString(), utf8("NULL")};
    const qint64 large = 9'007'199'254'740'993;
    const auto result = connection.run(
        utf8("SELECT $2::bigint, array_to_string($1::text[], '|', '-')"), {texts, large});
    EXPECT_EQ(result.key(0, 0), large);
    EXPECT_EQ(result.text(0, 1), texts.join(u'|'));

    const Variant cut(QStringLiteral("a") + QChar(QChar::Null));
    EXPECT_EQ(errorNumberOf([&] { PostgresParameter{cut}; }), 3421);
    EXPECT_EQ(errorNumberOf([&] { PostgresParameter{QStringList{cut.toText()}}; }), 3421);
    EXPECT_EQ(errorNumberOf([&] { connection.copyRows(utf8("s.v (c)"), {{cut}}); }), 3421);
}

TEST_F(PostgresConnectionTest, RaisesErrorsOfTheDesktopEngine) {
    natively("DROP ROLE IF EXISTS guest; CREATE ROLE guest; INSERT INTO s.t VALUES (1, 'x')");
    constexpr std::pair<const char*, const char*> cases[] = {
        {"INSERT INTO s.t VALUES (1, 'y')", "3022"},
        {"INSERT INTO s.t VALUES (2, NULL)", "3314: The field 'a'"},
        {"INSERT INTO s.t VALUES (2, 'y', 9)", "3317: One or more values are prohibited by the "
                                               "validation rule set for 't_b_check'"},
        {"INSERT INTO s.t VALUES (2, 'sixsix')", "3163"},
        {"SELECT * FROM s.nowhere", "3078: The Microsoft Jet database engine cannot find the input "
                                    "table or query 'nowhere'"},
        {"CREATE TABLE north_bcx.t ()", "3024: Could not find file 'the site'"},
        {"SELECT (SELECT generate_series(1, 2))", "3354"},
        {"SELECT 2147483647::int + 1", "6: Overflow"},
        {"SELECT 'x'::bigint", "3421"},
        {"SELECT convert_from('\\xff', 'UTF8')", "3421"},
        {"SELECT 1 / 0", "51: division by zero"},
        {"SET lock_timeout = '20ms'", ""},
        {"TRUNCATE s.t", "3196: The database 'the site' is"},
        {"SET ROLE guest", ""},
        {"SELECT 1 FROM s.t", "3033: You do not have the necessary permissions to use the 's'"},
    };
    PostgresConnection other = connect();
    other.runAll({statement("BEGIN"), statement("SELECT 1 FROM s.t")});
    PostgresConnection connection = connect();
    for (const auto& [native, error] : cases) {
        const std::string raised = raisedBy([&, sql = native] { connection.run(utf8(sql)); });
        EXPECT_TRUE(raised.starts_with(error) && raised.empty() == !*error) << native << raised;
    }
    EXPECT_FALSE(connection.lost());
}

TEST_F(PostgresConnectionTest, StopsAtTheFirstFailure) {
    PostgresConnection connection = connect();
    const auto before = connection.roundTrips();
    EXPECT_EQ(errorNumberOf([&] { connection.runAll({insert(1), insert(1), insert(2)}); }), 3022);
    EXPECT_EQ(connection.roundTrips() - before, 1);
    EXPECT_FALSE(connection.inTransaction());

    connection.runAll({statement("BEGIN"), insert(1), statement("SAVEPOINT p")});
    EXPECT_EQ(errorNumberOf([&] { connection.runAll({insert(2), insert(1), insert(3)}); }), 3022);
    EXPECT_TRUE(connection.inTransaction());
    connection.runAll({statement("ROLLBACK TO p"), insert(4), statement("COMMIT")});
    EXPECT_EQ(errorNumberOf([&] {
                  connection.copyRows(utf8("s.t (k, a)"),
                                      {{Variant(5), Variant(u"x")}, {Variant(4), Variant(u"x")}});
              }),
              3022);
    EXPECT_EQ(keys(connection), u"1 4");
}

// More than the buffers of both sides hold, in both directions at once.
TEST_F(PostgresConnectionTest, SendsAndReceivesMuchAtOnce) {
    PostgresConnection connection = connect();
    const Variant text(QString(500'000, u'é'));
    const auto results = connection.runAll(std::vector<PostgresStatement>(
        20, statement("SELECT $1::text FROM generate_series(1, 2)", {text})));
    EXPECT_TRUE(results.at(19).value(1, 0, ValueType::Text).sameValue(text));
    int called = 0;
    connection.setProgress([&] { ++called; });
    one(connection, "SELECT pg_sleep(0.15)");
    EXPECT_EQ(called, 1);
}

TEST_F(PostgresConnectionTest, KeepsSomeStatementsPrepared) {
    PostgresConnection connection = connect();
    for (int i = 0; i < 100; ++i) {
        connection.run(QStringLiteral("SELECT %1").arg(i));
        errorNumberOf([&] { connection.run(QStringLiteral("SELECT 1 / $1::int"), {Variant(0)}); });
    }
    const int count = one(connection, "SELECT count(*) FROM pg_prepared_statements").toInt();
    EXPECT_TRUE(count > 30 && count <= 64) << count;
}

// Alone, and amid a transaction, of which nothing is lost.
TEST_F(PostgresConnectionTest, ATableMayChangeUnderASession) {
    const QString site = QStringLiteral("postgresql://postgres@/postgres/x?host=%1\\bcx.mdb");
    PostgresSession session(parseServerAddress(site.arg(PostgresCluster::shared().folder())));
    const auto columns = [&] {
        const auto all = session.readAll({statement("SELECT * FROM s.t"), statement("SELECT 1")});
        return PQnfields(all.front().native());
    };
    EXPECT_EQ(columns(), 3);
    natively("ALTER TABLE s.t ADD COLUMN c text");
    EXPECT_EQ(columns(), 4);
    natively("ALTER TABLE s.t ADD COLUMN d text");
    session.begin(TransactionKind::Write);
    session.write(utf8("s"), insert(1));
    EXPECT_EQ(columns(), 5);
    session.commit();
    EXPECT_EQ(keys(session.connection()), u"1");
}

TEST_F(PostgresConnectionTest, OpensInOneWayOnlyOrSaysWhyNot) {
    natively("DROP DATABASE IF EXISTS closed");
    natively("CREATE DATABASE closed");
    natively("REVOKE CONNECT ON DATABASE closed FROM PUBLIC; DROP ROLE IF EXISTS visitor;"
             "CREATE ROLE visitor LOGIN; ALTER ROLE visitor SET bytea_output = 'escape'");
    PostgresConnection open = connect(" user=visitor options='-c work_mem=5MB -c DateStyle=SQL'");
    constexpr std::pair<const char*, const char*> settings[] = {
        {"SHOW search_path", "pg_catalog,pg_temp"},
        {"SHOW DateStyle", "ISO, MDY"},
        {"SHOW bytea_output", "hex"},
        {"SHOW work_mem", "5MB"},
        {"SHOW client_encoding", "UTF8"},
        {"SHOW lock_timeout", "2s"},
        {"SELECT string_agg(name, ' ' ORDER BY name) FROM pg_settings WHERE source = 'client'",
         "application_name client_encoding work_mem"}};
    for (const auto& [question, answer] : settings)
        EXPECT_EQ(one(open, question), utf8(answer));

    const std::string failed = "3151: Connection to 'the site' failed: ";
    const std::pair<const char*, std::string> refusals[] = {
        {" password=SECRET dbname=nowhere", failed + "there is no such database on the server."},
        {" password=SECRET user=nobody_here", "3029: Not a valid account name or password."},
        {" password=SECRET user=visitor dbname=closed", "3033: You do not have"},
        {" password=SECRET port=1", failed + "connection to server on socket"},
        {" password=SECRET host=no.such.host.invalid", failed + "could not translate host name"},
        {" password=SECRET nonsense=1", failed + "invalid connection option"}};
    for (const auto& [change, error] : refusals) {
        const std::string raised = raisedBy([&, sent = change] { connect(sent); });
        EXPECT_TRUE(raised.starts_with(error) && raised.find("SECRET") == std::string::npos)
            << raised;
    }
}

// It is there and its network takes what is sent, as far as that has room.
TEST_F(PostgresConnectionTest, GivesUpAServerThatHasStopped) {
    for (const qsizetype size : {1, 3'000'000}) {
        PostgresConnection connection{PostgresCluster::shared().conninfo(), utf8("the site"),
                                      std::chrono::milliseconds(300)};
        const int server = one(connection, "SELECT pg_backend_pid()").toInt();
        ::kill(server, SIGSTOP);
        const Variant text(QString(size, u'x'));
        EXPECT_EQ(errorNumberOf([&] {
                      size == 1 ? connection.run(utf8("SELECT $1::text"), {text}).rows()
                                : (connection.copyRows(utf8("s.t (a)"), {{text}}), 0);
                  }),
                  3043);
        EXPECT_TRUE(connection.lost());
        ::kill(server, SIGCONT);
    }
}

TEST_F(PostgresConnectionTest, HearsOfOthersAndOfTheEnd) {
    PostgresConnection idle = connect();
    PostgresConnection working = connect();
    idle.run(utf8("LISTEN \"Board\""));
    idle.run(utf8("NOTIFY \"Board\", 'own'"));
    natively("INSERT INTO s.t VALUES (1, 'x'); NOTIFY \"Board\", 'é'");
    one(idle, "SELECT 1");
    const auto taken = idle.takeNotifications();
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_TRUE(taken[0].isOwn && taken[0].channel == u"Board");
    EXPECT_TRUE(!taken[1].isOwn && taken[1].text == u"é");

    PostgresConnection ended = connect();
    EXPECT_EQ(errorNumberOf([&] { one(ended, "SELECT pg_terminate_backend(pg_backend_pid())"); }),
              3043);
    working.runAll({statement("BEGIN"), insert(2)});
    PostgresCluster::shared().kill();
    EXPECT_EQ(errorNumberOf([&] { connect(); }), 3151);
    PostgresCluster::shared().start();
    EXPECT_EQ(errorNumberOf([&] { working.run(utf8("COMMIT")); }), 3043);
    EXPECT_EQ(errorNumberOf([&] { working.copyRows(utf8("s.t"), {}); }), 3043);
    EXPECT_TRUE(idle.takeNotifications().empty());
    EXPECT_TRUE(working.lost() && idle.lost() && ended.lost());
    PostgresConnection next = connect();
    EXPECT_EQ(keys(next), u"1");
}

} // namespace

} // namespace tallyroom
