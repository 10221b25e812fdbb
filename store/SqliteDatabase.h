// A database file under SQLite.
#pragma once

#include "store/Database.h"
#include "store/SqliteCatalog.h"
#include "store/sql/Ast.h"
#include "store/sql/Bound.h"

#include <functional>

namespace tallyroom {

// A Select as a recordset keeps it, to be run again and to be run in another order.
struct RecordsetQuery {
    std::shared_ptr<const sql::SelectStatement> select;
    std::shared_ptr<const std::vector<sql::OrderItem>> sort; // null: the statement's own
    RecordsetType type = RecordsetType::Dynaset;
};

class SqliteDatabase final : public Database {
public:
    // `file` is a native path of an existing file.
    explicit SqliteDatabase(const QString& file);

    void execute(const QString& sql) override;
    bool executeAsOne(const QStringList& updates) override;
    bool refill(const QString& insert) override;
    std::shared_ptr<Recordset> openRecordset(const QString& sql, RecordsetType type) override;
    void beginBatch() override;
    void commitBatch() override;
    void undoBatch() override;
    bool inBatch() const override;
    // Counts the batches; 0 while there is none, so that others may write.
    int batchNumber() const { return inBatch() ? m_batches : 0; }
    bool beginReading() override;
    void endReading() override;
    ChangeMark changeMark() override;
    void setProgress(std::function<void()> callback) override;
    bool isInPlace() override;
    void close() override;

    // For the recordsets of this connection; each raises 3420 after close().
    std::shared_ptr<Recordset> open(const RecordsetQuery& query);
    SqliteConnection& connection();
    bool isOpen() const { return m_session != nullptr; }
    const sql::Catalog& catalog();
    sql::BoundSelect bind(const RecordsetQuery& query);
    // None when one of them is no Update that can be understood.
    std::vector<sql::BoundUpdate> boundUpdates(const QStringList& updates);

private:
    struct Session {
        explicit Session(const QString& file) : connection(file), catalog(connection) {}
        SqliteConnection connection;
        SqliteCatalog catalog;
    };

    Session& session();
    void runStatement(const sql::SelectStatement& statement);
    void runStatement(const sql::DeleteStatement& statement);
    void runStatement(const sql::InsertStatement& statement);
    void runStatement(const sql::UpdateStatement& statement);
    void runStatement(const sql::DropStatement& statement);
    QString composedText(const QStringList& updates);
    QString targetFile(const QString& named);
    void insertInto(const sql::InsertStatement& statement, const QString& file);
    void withTarget(const QString& file, const std::function<void()>& work);
    void refillTarget(const sql::InsertStatement& statement);

    std::unique_ptr<Session> m_session; // null once closed
    bool m_inBatch = false;
    int m_batches = 0;
    bool m_reading = false;
    qint64 m_drops = 0; // tables, which the engine does not count among the changes
};

} // namespace tallyroom
