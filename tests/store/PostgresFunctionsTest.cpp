// The functions of both engines over the same values.
#include "store/postgres/PostgresFunctions.h"
#include "store/sqlite/SqliteFunctions.h"
#include "tests/store/EngineValues.h"
#include "tests/support/PostgresCluster.h"

#include <QJsonDocument>
#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <libpq-fe.h>

namespace tallyroom {
namespace {

using namespace Qt::StringLiterals;

// Of the columns a, b and c, which have the types named.
struct Comparison {
    const char* sqlite;
    const char* postgres;
    const char* types;
    Rows (*rows)();
};

constexpr Comparison comparisons[] = {
    {"tr_upper(a)", "tallyroom.tr_upper(a)", "text", texts},
    {"tr_lower(a)", "tallyroom.tr_lower(a)", "text", texts},
    {"(a COLLATE NOCASE = b) + 2 * (a COLLATE NOCASE < b)",
     "(tallyroom.tr_nocase(a) = tallyroom.tr_nocase(b))::int"
     " + 2 * (tallyroom.tr_nocase(a) < tallyroom.tr_nocase(b) COLLATE \"C\")::int",
     "text text", textPairs},
    {"(a COLLATE TR_TEXT = b) + 2 * (a COLLATE TR_TEXT < b)",
     "(tallyroom.tr_same(a) = tallyroom.tr_same(b))::int"
     " + 2 * (tallyroom.tr_same(a) < tallyroom.tr_same(b) COLLATE tallyroom.tr_order)::int",
     "text text", textPairs},
    {"a COLLATE NOCASE BETWEEN tr_lowest(b) AND tr_highest(b) AND a COLLATE TR_TEXT = b",
     "(tallyroom.tr_nocase(a) COLLATE \"C\" BETWEEN tallyroom.tr_lowest(b)"
     " AND tallyroom.tr_highest(b) AND tallyroom.tr_same(a) = tallyroom.tr_same(b))::int",
     "text text", textPairs},
    {"(SELECT min(v COLLATE NOCASE) || '|' || max(v COLLATE NOCASE)"
     " FROM (SELECT a v UNION ALL SELECT NULL UNION ALL SELECT b UNION ALL SELECT c))",
     "(SELECT tallyroom.tr_min(v) || '|' || tallyroom.tr_max(v)"
     " FROM (VALUES (a), (NULL), (b), (c)) AS t(v))",
     "text text text", textPairs},
    {"tr_concat(a, b)", "tallyroom.tr_concat(a, b)", "text text", patterns},
    {"tr_like(a, b)", "tallyroom.tr_like(a, b)::int", "text text", patterns},
    {"substr(a, 1, max(b, 0))", "tallyroom.tr_left(a, b)", "text bigint", textParts},
    {"tr_right(a, b)", "tallyroom.tr_right(a, b)", "text bigint", textParts},
    {"substr(a, b, max(c, 0))", "tallyroom.tr_middle(a, b, c)", "text bigint bigint", textParts},
    {"substr(a, b)", "tallyroom.tr_middle(a, b)", "text bigint", textParts},
    {"tr_long(a)", "tallyroom.tr_long(a)", "float8", numbers},
    {"tr_number(a)", "tallyroom.tr_number(a)", "text", numberTexts},
    {"tr_number_text(a)", "tallyroom.tr_number_text(a)", "float8", numbers},
    {"tr_number_text(a)", "tallyroom.tr_number_text(a)", "bigint", wholeNumbers},
    {"tr_from_serial(a)", "tallyroom.tr_from_serial(a)", "float8", numbers},
    {"tr_serial(a)", "tallyroom.tr_serial(a)", "timestamp", dates},
    {"tr_date_text(a)", "tallyroom.tr_date_text(a)", "timestamp", dates},
    {"tr_date(a)", "tallyroom.tr_date(a)", "text", dateTexts},
};

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

// A database of another locale with the functions, made twice as by two versions of the program.
class Server {
public:
    Server() : m_server(connection(), PQfinish) {
        run("SET client_min_messages = warning");
        run("BEGIN");
        for (const QString& statement : functionStatements() + functionStatements())
            run(statement.toUtf8());
        run("COMMIT");
        // Sessions may have other settings than the one that made the functions.
        run("SET standard_conforming_strings = off");
        run("SET DateStyle = 'ISO, DMY'");
        run("SET search_path = ''");
    }

    Result run(const QByteArray& sql, const QByteArray& parameter = {}) {
        const char* const value = parameter.constData();
        Result result(PQexecParams(m_server.get(), sql, parameter.isNull() ? 0 : 1, nullptr, &value,
                                   nullptr, nullptr, 0),
                      PQclear);
        EXPECT_STREQ(PQresultErrorMessage(result.get()), "") << sql.left(200).toStdString();
        return result;
    }

    Result results(const Comparison& comparison, const Rows& rows) {
        QByteArrayList columns;
        for (const QByteArray& type : QByteArray(comparison.types).split(' '))
            columns << QByteArray("(r->>%1)::%2 AS %3")
                           .replace("%1", QByteArray::number(columns.size()))
                           .replace("%2", type)
                           .replace("%3", QByteArray(1, "abc"[columns.size()]));
        QJsonArray all;
        for (const QJsonArray& row : rows)
            all << row;
        return run(QByteArray("SELECT ") + comparison.postgres + " FROM (SELECT n," +
                       columns.join(',') +
                       " FROM json_array_elements($1) WITH ORDINALITY AS rows(r, n) OFFSET 0)"
                       " AS v ORDER BY n",
                   QJsonDocument(all).toJson(QJsonDocument::Compact));
    }

private:
    static PGconn* connection() {
        PostgresCluster& cluster = PostgresCluster::shared();
        cluster.execute(u"postgres"_s, u"CREATE DATABASE turkish TEMPLATE template0"
                                       " LOCALE_PROVIDER icu ICU_LOCALE 'tr'"_s);
        return PQconnectdb(cluster.conninfo(u"turkish"_s).toUtf8());
    }

    std::unique_ptr<PGconn, decltype(&PQfinish)> m_server;
};

void bindRow(SQLite::Statement& statement, const QJsonArray& row) {
    statement.reset();
    statement.clearBindings();
    for (int i = 0; i < statement.getBindParameterCount() && i < row.size(); ++i) {
        const QVariant value = row[i].toVariant();
        if (value.typeId() == QMetaType::LongLong)
            statement.bind(i + 1, static_cast<std::int64_t>(value.toLongLong()));
        else if (value.typeId() == QMetaType::Double)
            statement.bind(i + 1, value.toDouble());
        else if (value.typeId() == QMetaType::QString)
            statement.bind(i + 1, value.toString().toStdString());
    }
    statement.executeStep();
}

bool agree(const SQLite::Column& expected, const PGresult* result, int row) {
    if (expected.isNull() || PQgetisnull(result, row, 0))
        return expected.isNull() && PQgetisnull(result, row, 0);
    const QByteArray text = PQgetvalue(result, row, 0);
    return expected.isFloat() ? text.toDouble() == expected.getDouble()
                              : text.toStdString() == expected.getString();
}

void compare(const Comparison& comparison, SQLite::Database& file, Server& server) {
    const Rows rows = comparison.rows();
    const Result result = server.results(comparison, rows);
    ASSERT_EQ(PQntuples(result.get()), rows.size()) << comparison.postgres;
    SQLite::Statement statement(file, std::string("SELECT ") + comparison.sqlite +
                                          " FROM (SELECT ?1 AS a, ?2 AS b, ?3 AS c)");
    int others = 0;
    for (int i = 0; i < rows.size() && others < 5; ++i) {
        bindRow(statement, rows[i]);
        if (agree(statement.getColumn(0), result.get(), i))
            continue;
        ++others;
        ADD_FAILURE() << comparison.postgres << " of "
                      << QJsonDocument(rows[i]).toJson(QJsonDocument::Compact).toStdString()
                      << " is " << PQgetvalue(result.get(), i, 0) << " and not "
                      << statement.getColumn(0).getString();
    }
}

void expectIndexed(Server& server, const QByteArray& condition) {
    const Result plan = server.run("EXPLAIN (FORMAT json) SELECT (SELECT count(*) FROM pg_temp.t"
                                   " AS i WHERE " +
                                   condition + ") FROM pg_temp.t AS o");
    EXPECT_TRUE(QByteArray(PQgetvalue(plan.get(), 0, 0)).contains("Index Cond"))
        << condition.toStdString();
}

TEST(PostgresFunctions, AgreeWithTheOtherEngineAndServeIndexes) {
    if (const QString reason = PostgresCluster::skipReason(); !reason.isEmpty())
        GTEST_SKIP() << reason.toStdString();
    SQLite::Database file(":memory:");
    ASSERT_TRUE(registerSqliteFunctions(file.getHandle()));
    Server server;
    for (const Comparison& comparison : comparisons)
        compare(comparison, file, server);

    server.run("CREATE TEMP TABLE t (code text COLLATE \"C\")");
    server.run("CREATE INDEX ON pg_temp.t (tallyroom.tr_nocase(code))");
    server.run("INSERT INTO pg_temp.t SELECT 'E' || i FROM generate_series(1, 2000) AS i");
    server.run("ANALYZE pg_temp.t");
    const QByteArray key = "tallyroom.tr_nocase(i.code) COLLATE \"C\"";
    expectIndexed(server, key + " = 'e7'");
    expectIndexed(server, key + " IN ('e7', 'e8')");
    expectIndexed(server, key + " BETWEEN tallyroom.tr_lowest(o.code)"
                                " AND tallyroom.tr_highest(o.code)");
}

} // namespace
} // namespace tallyroom
