// A database file under SQLite.
#pragma once

#include "store/engine/EngineDatabase.h"
#include "store/sqlite/SqliteCatalog.h"

namespace tallyroom {

class SqliteDatabase final : public EngineDatabase {
public:
    // `file` is a native path of an existing file.
    SqliteDatabase(const QString& file, WhenInUse answer, CopySearchMaker maker);

    void executeAll(const QStringList& statements) override;
    void begin(TransactionKind kind) override;
    bool commit() override;
    void rollback() noexcept override;
    bool inTransaction() const override;
    ChangeMark changeMark() override;
    void setWhenInUse(WhenInUse answer) override;
    void setProgress(std::function<void()> callback) override;
    bool isLost() const override { return false; }
    void announce(const QString&) override {}
    void setListener(std::function<void(const QStringList&)>) override {}
    bool isInPlace() override;
    void checkStructure() override;
    void close() override;

    bool isOpen() const override { return m_session != nullptr; }
    const sql::Catalog& catalog() override;
    std::vector<Row> readRows(const sql::BoundSelect& query) override;
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

private:
    struct Session {
        Session(const QString& file, WhenInUse answer)
            : connection(file, answer), catalog(connection) {}
        SqliteConnection connection;
        SqliteCatalog catalog;
    };

    Session& session();
    SqliteConnection& connection();
    bool isOwnFile(const QString& file);
    void insertIntoFile(const sql::InsertStatement& statement, const QString& file);
    void reserve();
    void requireInPlace();
    qint64 userVersion();

    std::unique_ptr<Session> m_session; // null once closed
    qint64 m_drops = 0;                 // tables, which the engine does not count among the changes
};

} // namespace tallyroom
