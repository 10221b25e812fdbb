#include "store/postgres/PostgresVersion.h"

#include "store/ErrorSource.h"
#include "store/postgres/PostgresFunctions.h"

namespace tallyroom {

namespace {

RunError notPrepared(const QString& name) {
    return {ErrorNumber::unrecognizedFormat,
            QStringLiteral("The database of '%1' has not been prepared for this program, or for "
                           "another version of it.")
                .arg(name),
            ErrorSource::workspace};
}

} // namespace

void requireFunctions(PostgresConnection& connection) {
    bool suits = false;
    try {
        const PostgresResult version =
            connection.run(QStringLiteral("SELECT version FROM tallyroom.version"));
        suits = version.rows() == 1 && version.key(0, 0) == functionsVersion;
    } catch (const RunError& error) {
        if (error.number() != ErrorNumber::unknownTable &&
            error.number() != ErrorNumber::noPermission)
            throw;
    }
    if (!suits)
        throw notPrepared(connection.name());
}

} // namespace tallyroom
