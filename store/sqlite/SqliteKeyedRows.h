// The rows of one table by their rowid.
#pragma once

#include "store/engine/KeyedRows.h"
#include "store/sqlite/SqliteConnection.h"

namespace tallyroom {

class SqliteKeyedRows final : public KeyedRows {
public:
    // `connection` must outlive this.
    SqliteKeyedRows(SqliteConnection& connection, const sql::BoundSelect& query);

    std::vector<qint64> keys() override;
    std::vector<qint64> find(const sql::BoundPtr& criteria) override;
    std::optional<Row> read(qint64 key) override;
    qint64 insert(const QStringList& columns, const Row& values) override;
    bool update(qint64 key, const QStringList& columns, const Row& values) override;
    bool remove(qint64 key) override;

private:
    std::vector<qint64> keysOf(const sql::Native& native);
    bool hasChangedRow() const;

    SqliteConnection& m_connection;
    const sql::BoundSelect& m_query;
    QString m_readText;
    QStringList m_updated; // the columns that m_updateText writes
    QString m_updateText;
};

} // namespace tallyroom
