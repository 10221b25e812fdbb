#include "store/postgres/PostgresSite.h"

#include "store/ErrorSource.h"
#include "store/postgres/PostgresDatabase.h"
#include "store/postgres/PostgresFunctions.h"
#include "store/postgres/PostgresSchema.h"
#include "store/postgres/PostgresSession.h"
#include "store/postgres/PostgresVersion.h"

#include <libpq-fe.h>

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

// While a site is being made, all that is opened of it shares one transaction.
class [[nodiscard]] Making {
public:
    explicit Making(PostgresSession& session) : m_session(session) {
        m_session.begin(TransactionKind::Write);
    }
    ~Making() {
        if (m_isOpen)
            m_session.rollback();
        PostgresSession::forget(m_session);
    }
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;

    void commit() {
        m_isOpen = false;
        m_session.commit();
    }

private:
    PostgresSession& m_session;
    bool m_isOpen = true;
};

} // namespace

QString postgresVersion() {
    constexpr int major = 10000; // as libpq counts versions
    return QStringLiteral("%1.%2").arg(PQlibVersion() / major).arg(PQlibVersion() % major);
}

std::shared_ptr<Database> openOnServer(const QString& path, WhenInUse answer,
                                       CopySearchMaker maker) {
    return std::make_shared<PostgresDatabase>(parseServerAddress(path), answer, maker);
}

// A database that serves other sites already is prepared once.
void createSite(const QString& path, const std::function<void()>& fill,
                std::span<const Schema::File> files) {
    std::vector<PostgresStatement> statements;
    std::shared_ptr<PostgresSession> session;
    for (const Schema::File& file : files) {
        const ServerAddress address =
            parseServerAddress(path + u'\\' + QString::fromUtf16(file.name));
        if (!session) {
            session = PostgresSession::ofNewSite(address);
            if (!isPrepared(session->connection()))
                add(statements, functionStatements());
        }
        requireFree(session->connection(), address);
        add(statements, createSchemaStatements(address.schema, file));
    }
    Making making(*session);
    session->writeAll({}, statements);
    session->tables().forget();
    fill();
    making.commit();
}

void completeOnServer(const QString& path, const FileCompletion& completion) {
    const ServerAddress address = parseServerAddress(path);
    const auto session = PostgresSession::of(address);
    std::vector<PostgresStatement> statements;
    add(statements, completeSchemaStatements(address.schema, completion));
    session->writeAll(address.schema, statements);
    session->tables().forget();
}

} // namespace tallyroom
