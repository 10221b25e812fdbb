// A file of a site on a PostgreSQL server: a schema.
#pragma once

#include "store/engine/EngineDatabase.h"
#include "store/postgres/PostgresSession.h"

namespace tallyroom {

class PostgresDatabase final : public EngineDatabase {
public:
    // Raises 3024 for a site that is not there, and what PostgresSession::of() does.
    PostgresDatabase(const ServerAddress& address, WhenInUse answer, CopySearchMaker maker);
    ~PostgresDatabase() override;

    void executeAll(const QStringList& statements) override;
    void begin(TransactionKind kind) override;
    bool commit() override;
    void rollback() noexcept override;
    bool inTransaction() const override { return m_inTransaction; }
    ChangeMark changeMark() override;
    void setWhenInUse(WhenInUse answer) override;
    void setProgress(std::function<void()> callback) override;
    bool isLost() const override { return m_session && m_session->connection().lost(); }
    void announce(const QString& news) override;
    void setListener(std::function<void(const QStringList&)> callback) override;
    bool isInPlace() override;
    void checkStructure() override;
    void close() override;

    bool isOpen() const override { return m_session != nullptr; }
    const sql::Catalog& catalog() override;
    std::vector<Row> readRows(const sql::BoundSelect& query) override;
    std::vector<std::vector<Row>> readAll(const std::vector<sql::BoundSelect>& queries) override;
    std::unique_ptr<KeyedRows> keyedRows(const sql::BoundSelect& query) override;

protected:
    void run(const sql::BoundDelete& statement) override;
    void run(const sql::BoundUpdate& statement) override;
    void run(const sql::BoundInsert& statement) override;
    void run(const sql::BoundDrop& statement) override;
    void insertInto(const sql::InsertStatement& statement) override;
    void readRows(const sql::BoundSelect& query, std::size_t portion,
                  const TakeRows& take) override;
    void writeRows(const sql::CatalogTable& table, const std::vector<sql::CatalogColumn>& columns,
                   const std::vector<Row>& rows) override;
    void refill(const std::shared_ptr<const sql::CatalogTable>& table,
                const std::vector<sql::CatalogColumn>& columns,
                const std::vector<Row>& rows) override;

private:
    PostgresSession& session();
    void leaveSession() noexcept;
    std::optional<PostgresStatement> native(const sql::Statement& statement);
    bool hasFile(const QString& schema);
    void makeOwnTables();

    ServerAddress m_address;
    std::shared_ptr<PostgresSession> m_session; // null once closed
    PostgresCatalog m_catalog;
    PostgresCaller m_caller;
    bool m_inTransaction = false;
};

} // namespace tallyroom
