// The rows of one table by the key that each is given when it is added.
#pragma once

#include "store/engine/KeyedRows.h"
#include "store/postgres/PostgresSession.h"

namespace tallyroom {

// Reads ahead, since each question to a server takes its time: what somebody else changes in rows
// that have been read ahead is seen after the next write of this session. Nobody else changes the
// session's own tables, which are read whole, and at once.
class PostgresKeyedRows final : public KeyedRows {
public:
    // `caller` is the database's, which outlives this.
    PostgresKeyedRows(std::shared_ptr<PostgresSession> session, const PostgresCaller& caller,
                      const sql::BoundSelect& query);

    std::vector<qint64> keys() override;
    std::vector<qint64> find(const sql::BoundPtr& criteria) override;
    std::optional<Row> read(qint64 key) override;
    qint64 insert(const QStringList& columns, const Row& values) override;
    bool update(qint64 key, const QStringList& columns, const Row& values) override;
    bool remove(qint64 key) override;

private:
    qint64 changes() const { return m_session->changes(m_query.source->table->place); }
    bool isOwn() const { return m_query.source->table->place == ownSchema; }
    void readAhead(qint64 key);
    void take(const PostgresResult& rows);
    PostgresResult write(const QString& native, const Row& values, std::optional<qint64> key);

    PostgresSession& session();

    std::shared_ptr<PostgresSession> m_session;
    const PostgresCaller& m_caller;
    const sql::BoundSelect& m_query;
    struct Place {
        PostgresResult rows;
        int row;
    };

    std::vector<qint64> m_keys; // as the query gave them
    QHash<qint64, qsizetype> m_positions;
    QHash<qint64, Place> m_ahead; // rows as they were ...
    qint64 m_asOf = -1;           // ... after so many changes
};

} // namespace tallyroom
