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
    SqliteDatabase(const QString& file, WhenInUse answer);

    void execute(const QString& sql) override;
    std::shared_ptr<Recordset> openRecordset(const QString& sql, RecordsetType type) override;
    bool keepsWhatIsWritten(const Schema::Table& table) override;
    void replaceRows(const QString& table, const QStringList& columns,
                     const std::vector<Row>& rows) override;
    void begin(TransactionKind kind) override;
    void commit() override;
    void rollback() noexcept override;
    bool inTransaction() const override;
    ChangeMark changeMark() override;
    void setWhenInUse(WhenInUse answer) override;
    void setProgress(std::function<void()> callback) override;
    bool isInPlace() override;
    void checkStructure() override;
    void close() override;

    // For the recordsets of this connection; each raises 3420 after close().
    std::shared_ptr<Recordset> open(const RecordsetQuery& query);
    SqliteConnection& connection();
    bool isOpen() const { return m_session != nullptr; }
    const sql::Catalog& catalog();
    sql::BoundSelect bind(const RecordsetQuery& query);

private:
    struct Session {
        Session(const QString& file, WhenInUse answer)
            : connection(file, answer), catalog(connection) {}
        SqliteConnection connection;
        SqliteCatalog catalog;
    };

    Session& session();
    void runStatement(const sql::SelectStatement& statement);
    void runStatement(const sql::DeleteStatement& statement);
    void runStatement(const sql::InsertStatement& statement);
    void runStatement(const sql::UpdateStatement& statement);
    void runStatement(const sql::DropStatement& statement);
    QString targetFile(const QString& named);
    void insertInto(const sql::InsertStatement& statement, const QString& file);
    void reserve();
    void requireInPlace();
    qint64 userVersion();

    std::unique_ptr<Session> m_session; // null once closed
    qint64 m_drops = 0;                 // tables, which the engine does not count among the changes
};

} // namespace tallyroom
