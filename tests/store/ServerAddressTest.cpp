// Addresses of sites on a server: what they lead to, and that no secret gets out of a wrong one.
#include "store/postgres/ServerAddress.h"
#include "common/RunError.h"

#include <gtest/gtest.h>

namespace tallyroom {

namespace {

struct Case {
    const char* path;
    const char* result; // conninfo, schema and what is shown, or number and description
};

std::string resultOf(const Case& known) {
    try {
        const ServerAddress address = parseServerAddress(QString::fromUtf8(known.path));
        return QStringList{address.conninfo, address.schema, address.shown}
            .join(u' ')
            .toStdString();
    } catch (const RunError& error) {
        return error.what();
    }
}

TEST(ServerAddress, LeadsToASchemaAndNeverShowsASecret) {
    constexpr Case cases[] = {
        {R"(postgresql://anna@db.plant:5433/tally/North-1\bcx.mdb)",
         R"(postgresql://anna@db.plant:5433/tally north-1_bcx postgresql://anna@db.plant:5433/tally/North-1\bcx.mdb)"},
        {R"(postgresql:///tally/S?host=/run/pg&sslmode=require\AIDB01.MDB)",
         R"(postgresql:///tally?host=/run/pg&sslmode=require s_aidb01 postgresql:///tally/S\AIDB01.MDB)"},
        {R"(postgresql://[::1]:1,b/t/S?service=x\vrlxdb01.mdb)",
         R"(postgresql://[::1]:1,b/t?service=x s_vrlxdb01 postgresql://[::1]:1,b/t/S\vrlxdb01.mdb)"},
        {R"(postgresql://a:SECRET@h/t/S\bcx.mdb)",
         "3044: 'postgresql://…' is not a valid path: it must"},
        {R"(postgresql://h/t/S?user=a&p%61ssword=SECRET\bcx.mdb)",
         "3044: 'postgresql://h/t/S' is not a valid path: it must"},
        {R"(postgresql://h/t/S?sslpassword=SECRET\bcx.mdb)",
         "3044: 'postgresql://h/t/S' is not a valid path: it must"},
        {R"(postgresql://a:SECRET/b@h/t/S\bcx.mdb)", "3044: 'postgresql://…' is not a valid path."},
        {R"(postgresql://a:12/SECRET@h/t/S\bcx.mdb)",
         "3044: 'postgresql://…' is not a valid path."},
        {R"(postgresql://a:1?SECRET@h/t/S\bcx.mdb)", "3044: 'postgresql://…' is not a valid path."},
        {R"(postgres://a:SECRET/t/S\bcx.mdb)", "3044: 'postgresql://…' is not a valid path."},
        {R"(postgresql://h/t\bcx.mdb)", R"(3044: 'postgresql://h/t\bcx.mdb' is not a valid path.)"},
        {R"(postgresql://h//S\bcx.mdb)",
         R"(3044: 'postgresql://h//S\bcx.mdb' is not a valid path.)"},
        {R"(postgresql://h/t/a.b\bcx.mdb)", "3044: "},
        {R"(postgresql://h/t/Ä\bcx.mdb)", "3044: "},
        {R"(postgresql://h/t/12345678901234567890123456789012345678901\bcx.mdb)", "3044: "},
        {R"(postgresql://h/t/S?dbname=u\bcx.mdb)", "3044: "},
        {R"(postgresql://h/t/S)", "3044: "},
        {R"(postgresql://h/t/S?user=a\other.mdb)",
         R"(3024: Could not find file 'postgresql://h/t/S\other.mdb'.)"},
    };
    for (const Case& known : cases) {
        EXPECT_EQ(resultOf(known).substr(0, std::string_view(known.result).size()), known.result)
            << known.path;
        EXPECT_EQ(resultOf(known).find("SECRET"), std::string::npos) << known.path;
        EXPECT_TRUE(isServerAddress(QString::fromUtf8(known.path)));
    }
    EXPECT_FALSE(isServerAddress(QStringLiteral("/data/postgresql://x")));
}

TEST(ServerAddress, OfASiteBesideIsOne) {
    const QString ending = QStringLiteral("-20261122-1023");
    for (const int length : {1, 26, 27, 40}) {
        const QString site(length, u's');
        const QString beside =
            addressBeside(QStringLiteral("postgresql://a@h/t/%1?service=x/y").arg(site), ending);
        const ServerAddress address = parseServerAddress(beside + QStringLiteral("\\bcx.mdb"));
        EXPECT_EQ(address.site, site.left(26) + ending);
        EXPECT_EQ(address.conninfo, QStringLiteral("postgresql://a@h/t?service=x/y"));
    }
    EXPECT_THROW(
        parseServerAddress(
            QStringLiteral("postgresql://h/t/%1\\bcx.mdb").arg(QString(longestSite + 1, u's'))),
        RunError);
}

} // namespace

} // namespace tallyroom
