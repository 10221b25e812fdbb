// The tables of a connection's files, read from the engine and kept until a file's tables change.
#pragma once

#include "store/sql/Catalog.h"
#include "store/sqlite/SqliteConnection.h"

namespace tallyroom {

class SqliteCatalog final : public sql::Catalog {
public:
    // Names of the connection's own file and of the one that an insert goes to.
    static inline const QString ownPlace = QStringLiteral("main");
    static inline const QString targetPlace = QStringLiteral("target");

    explicit SqliteCatalog(SqliteConnection& connection) : m_connection(connection) {}

    std::shared_ptr<const sql::CatalogTable> findTable(const QString& name) const override;
    std::shared_ptr<const sql::CatalogTable> findTargetTable(const QString& name) const override;
    QStringList tableNames() const override;
    bool keepsTextsCaseBlind() const override { return true; }

    void setInsertPlace(const QString& place) { m_insertPlace = place; }

private:
    struct Entry {
        qint64 version = 0;
        std::shared_ptr<const sql::CatalogTable> table;
    };

    qint64 version(const QString& place) const;
    std::shared_ptr<const sql::CatalogTable> find(const QString& place, const QString& name) const;
    std::shared_ptr<const sql::CatalogTable> read(const QString& place, const QString& name) const;
    bool hasRules(const sql::CatalogTable& table) const;
    bool hasDefaults(const sql::CatalogTable& table) const;
    void readColumns(sql::CatalogTable& table) const;

    SqliteConnection& m_connection;
    QString m_insertPlace = ownPlace;
    mutable QHash<QString, Entry> m_tables; // of the own file, by lower-case name
};

} // namespace tallyroom
