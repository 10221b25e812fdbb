// What the databases of all engines have in common: from a text to a bound statement.
#pragma once

#include "store/Database.h"
#include "store/engine/CopySearch.h"
#include "store/engine/KeyedRows.h"
#include "store/sql/Ast.h"
#include "store/sql/Bound.h"

namespace tallyroom {

// A Select as a recordset keeps it, to be run again and to be run in another order.
struct RecordsetQuery {
    std::shared_ptr<const sql::SelectStatement> select;
    std::shared_ptr<const std::vector<sql::OrderItem>> sort; // null: the statement's own
    RecordsetType type = RecordsetType::Dynaset;
};

class EngineDatabase : public Database {
public:
    explicit EngineDatabase(CopySearchMaker maker) : m_searches(maker) {}

    void execute(const QString& sql) final;
    std::shared_ptr<Recordset> openRecordset(const QString& sql, RecordsetType type) final;
    std::vector<std::shared_ptr<Recordset>> openSnapshots(const QStringList& statements) final;
    bool keepsWhatIsWritten(const Schema::Table& table) final;
    void replaceRows(const QString& table, const QStringList& columns,
                     const std::vector<Row>& rows) final;
    void appendRows(const QString& table, const QStringList& columns,
                    const std::vector<Row>& rows) final;
    std::vector<TableFormat> tables() final;
    void readPortions(const QString& table, std::size_t portion, const TakeRows& take) final;

    // For the recordsets of this connection; each raises 3420 after close().
    virtual bool isOpen() const = 0;
    void requireOpen();
    std::shared_ptr<Recordset> open(const RecordsetQuery& query);
    sql::BoundSelect bind(const RecordsetQuery& query);
    virtual const sql::Catalog& catalog() = 0;
    virtual std::vector<Row> readRows(const sql::BoundSelect& query) = 0;
    // Of several queries, one after the other.
    virtual std::vector<std::vector<Row>> readAll(const std::vector<sql::BoundSelect>& queries);
    virtual std::unique_ptr<KeyedRows> keyedRows(const sql::BoundSelect& query) = 0;
    CopySearchMaker searches() const { return m_searches; }

protected:
    virtual void run(const sql::BoundDelete& statement) = 0;
    virtual void run(const sql::BoundUpdate& statement) = 0;
    virtual void run(const sql::BoundInsert& statement) = 0;
    virtual void run(const sql::BoundDrop& statement) = 0;
    // An Insert that names a file. Raises 3024 and 3044 for one that is not there.
    virtual void insertInto(const sql::InsertStatement& statement) = 0;

    virtual void readRows(const sql::BoundSelect& query, std::size_t portion,
                          const TakeRows& take) = 0;
    // Writes rows into the columns as an Insert does, skipping those that the table cannot keep. A
    // transaction is open.
    virtual void writeRows(const sql::CatalogTable& table,
                           const std::vector<sql::CatalogColumn>& columns,
                           const std::vector<Row>& rows) = 0;
    // The same with all the table's rows in place of those that it has.
    virtual void refill(const std::shared_ptr<const sql::CatalogTable>& table,
                        const std::vector<sql::CatalogColumn>& columns,
                        const std::vector<Row>& rows);

private:
    void runStatement(const sql::SelectStatement& statement);
    void runStatement(const sql::DeleteStatement& statement);
    void runStatement(const sql::InsertStatement& statement);
    void runStatement(const sql::UpdateStatement& statement);
    void runStatement(const sql::DropStatement& statement);
    std::shared_ptr<const sql::CatalogTable> outputTable(const QString& name);

    CopySearchMaker m_searches;
};

} // namespace tallyroom
