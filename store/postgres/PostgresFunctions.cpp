#include "store/postgres/PostgresFunctions.h"

#include "store/postgres/PostgresConversions.h"
#include "store/postgres/PostgresTexts.h"

namespace tallyroom {

namespace {

// Two that set up a database at once would replace the same functions.
const QStringList beginning = {
    QStringLiteral("SELECT pg_advisory_xact_lock(hashtext('tallyroom.version'))"),
    QStringLiteral("CREATE SCHEMA IF NOT EXISTS tallyroom"),
    QStringLiteral(
        R"(DO $$ BEGIN
    IF to_regtype('tallyroom.yesno') IS NULL THEN
        CREATE DOMAIN tallyroom.yesno AS smallint CHECK (VALUE IN (-1, 0));
    END IF;
END $$)"),
};

QStringList ending() {
    return {
        QStringLiteral("CREATE TABLE IF NOT EXISTS tallyroom.version (version integer NOT NULL)"),
        QStringLiteral("DELETE FROM tallyroom.version"),
        QStringLiteral("INSERT INTO tallyroom.version VALUES (%1)").arg(functionsVersion),
        QStringLiteral("GRANT USAGE ON SCHEMA tallyroom TO PUBLIC"),
        QStringLiteral("GRANT USAGE ON DOMAIN tallyroom.yesno TO PUBLIC"),
        QStringLiteral("GRANT EXECUTE ON ALL FUNCTIONS IN SCHEMA tallyroom TO PUBLIC"),
        QStringLiteral("GRANT SELECT ON tallyroom.version TO PUBLIC"),
    };
}

} // namespace

QStringList functionStatements() {
    return beginning + postgresTexts() + postgresConversions() + ending();
}

} // namespace tallyroom
