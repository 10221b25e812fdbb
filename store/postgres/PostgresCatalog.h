// The tables of a site's files, read from the server and kept until they change.
#pragma once

#include "store/postgres/PostgresConnection.h"
#include "store/sql/Catalog.h"

#include <optional>

namespace tallyroom {

// The schema of what belongs to a session alone.
inline const QString ownSchema = QStringLiteral("pg_temp");

// All tables of some schemas. The first of a site's that is asked for is read together with the
// others and with the session's own, in one round trip.
class PostgresTables {
public:
    // `connection` must outlive this.
    PostgresTables(PostgresConnection& connection, const QStringList& site)
        : m_connection(connection), m_together(site + QStringList(ownSchema)) {}

    // The table of that name in any case, or null.
    std::shared_ptr<const sql::CatalogTable> find(const QString& schema, const QString& name);
    bool hasSchema(const QString& schema);
    // Asked for anew each time; views are left out, and so are parts of a table.
    QStringList names(const QString& schema);

    // Schemas are read anew when they are asked for again.
    void forget() { m_schemas.clear(); }
    void forget(const QString& schema) { m_schemas.remove(schema); }

private:
    using Tables = QHash<QString, std::shared_ptr<const sql::CatalogTable>>; // by lower-case name

    const std::optional<Tables>& tables(const QString& schema);
    QStringList unknownWith(const QString& schema) const;
    void take(const PostgresResult& columns);

    PostgresConnection& m_connection;
    QStringList m_together;
    QHash<QString, std::optional<Tables>> m_schemas; // nothing: there is no such schema
};

// What a statement finds that speaks to one file. The session's own tables count as those of the
// file that Schema says has some.
class PostgresCatalog final : public sql::Catalog {
public:
    // `tables` must outlive this.
    PostgresCatalog(PostgresTables& tables, QString schema)
        : m_tables(tables), m_schema(std::move(schema)), m_target(m_schema) {}

    std::shared_ptr<const sql::CatalogTable> findTable(const QString& name) const override;
    std::shared_ptr<const sql::CatalogTable> findTargetTable(const QString& name) const override;
    QStringList tableNames() const override;
    bool keepsTextsCaseBlind() const override { return false; }

    const QString& schema() const { return m_schema; }
    // The schema of the file to which an Insert goes.
    void setTarget(const QString& schema) { m_target = schema; }

private:
    std::shared_ptr<const sql::CatalogTable> find(const QString& schema, const QString& name) const;

    PostgresTables& m_tables;
    QString m_schema;
    QString m_target;
};

} // namespace tallyroom
