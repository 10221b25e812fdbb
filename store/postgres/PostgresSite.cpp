#include "store/postgres/PostgresSite.h"

#include "store/ErrorSource.h"
#include "store/postgres/PostgresDatabase.h"
#include "store/postgres/PostgresFunctions.h"
#include "store/postgres/PostgresSchema.h"
#include "store/postgres/PostgresVersion.h"

namespace tallyroom {

namespace {

void add(std::vector<PostgresStatement>& statements, const QStringList& natives) {
    for (const QString& native : natives)
        statements.push_back({native, {}});
}

void requireFree(PostgresConnection& connection, const ServerAddress& address) {
    const bool taken = connection
                           .run(QStringLiteral("SELECT FROM pg_namespace WHERE nspname = $1"),
                                {Variant(address.schema)})
                           .rows() > 0;
    if (taken)
        throw RunError::make(ErrorNumber::fileExists, {address.shown}, ErrorSource::workspace);
}

// Raises 3343 for what another version has prepared: its sites may be in use.
bool isPrepared(PostgresConnection& connection) {
    const bool isThere =
        !connection.run(QStringLiteral("SELECT to_regclass('tallyroom.version')")).isNull(0, 0);
    if (isThere)
        requireFunctions(connection);
    return isThere;
}

} // namespace

std::shared_ptr<Database> openOnServer(const QString& path, WhenInUse answer,
                                       CopySearchMaker maker) {
    return std::make_shared<PostgresDatabase>(parseServerAddress(path), answer, maker);
}

// A database that serves other sites already is prepared once. Statements of one round trip are one
// write.
void createSite(const QString& path) {
    std::vector<PostgresStatement> statements;
    std::optional<PostgresConnection> connection;
    for (const Schema::File& file : Schema::files()) {
        const ServerAddress address =
            parseServerAddress(path + u'\\' + QString::fromUtf16(file.name));
        if (!connection) {
            connection.emplace(address.conninfo, address.shown);
            if (!isPrepared(*connection))
                add(statements, functionStatements());
        }
        requireFree(*connection, address);
        add(statements, createSchemaStatements(address.schema, file));
    }
    connection->runAll(statements);
}

} // namespace tallyroom
