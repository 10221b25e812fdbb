#include "store/postgres/PostgresKeyedRows.h"

#include "store/postgres/PostgresDialect.h"

#include <algorithm>

namespace tallyroom {

namespace {

constexpr qsizetype portion = 500; // rows that are read ahead

std::vector<qint64> keysOf(const PostgresResult& result) {
    std::vector<qint64> keys;
    keys.reserve(static_cast<std::size_t>(result.rows()));
    for (int row = 0; row < result.rows(); ++row)
        keys.push_back(result.key(row, 0));
    return keys;
}

} // namespace

PostgresKeyedRows::PostgresKeyedRows(std::shared_ptr<PostgresSession> session,
                                     const PostgresCaller& caller, const sql::BoundSelect& query)
    : m_session(std::move(session)), m_caller(caller), m_query(query) {}

PostgresSession& PostgresKeyedRows::session() {
    m_session->workFor(m_caller);
    return *m_session;
}

std::vector<qint64> PostgresKeyedRows::keys() {
    const PostgresResult result = session().read(isOwn() ? postgresGenerator().keysAndRows(m_query)
                                                         : postgresGenerator().keys(m_query));
    m_keys = keysOf(result);
    m_positions.clear();
    m_positions.reserve(static_cast<qsizetype>(m_keys.size()));
    for (const qint64 key : m_keys)
        m_positions.insert(key, m_positions.size());
    m_asOf = -1;
    if (isOwn())
        take(result);
    return m_keys;
}

// What is found is read next.
std::vector<qint64> PostgresKeyedRows::find(const sql::BoundPtr& criteria) {
    const PostgresResult result = session().read(postgresGenerator().rowsWhere(m_query, criteria));
    take(result);
    return keysOf(result);
}

void PostgresKeyedRows::take(const PostgresResult& result) {
    if (m_asOf != changes())
        m_ahead.clear();
    for (int row = 0; row < result.rows(); ++row)
        m_ahead.insert(result.key(row, 0), {result, row});
    m_asOf = changes();
}

std::optional<Row> PostgresKeyedRows::read(qint64 key) {
    if (m_asOf != changes() || !m_ahead.contains(key))
        readAhead(key);
    const auto found = m_ahead.constFind(key);
    if (found == m_ahead.constEnd())
        return std::nullopt;
    return found->rows.row(found->row, m_query.columns, 1);
}

void PostgresKeyedRows::readAhead(qint64 key) {
    const auto total = static_cast<qsizetype>(m_keys.size());
    const qsizetype first = isOwn() ? 0 : m_positions.value(key, total);
    QStringList keys{QString::number(key)};
    for (qsizetype at = first; at < (isOwn() ? total : std::min(first + portion, total)); ++at)
        keys << QString::number(m_keys[static_cast<std::size_t>(at)]);
    m_ahead.clear();
    take(session().read(postgresGenerator().rowsByKey(m_query), {PostgresParameter(keys)}));
}

// What is written here changes no other row.
PostgresResult PostgresKeyedRows::write(const QString& native, const Row& values,
                                        std::optional<qint64> key) {
    PostgresParameters parameters(values.begin(), values.end());
    if (key)
        parameters.emplace_back(*key);
    const bool current = m_asOf == changes();
    PostgresResult result =
        session().write(m_query.source->table->place, PostgresStatement{native, parameters});
    if (current)
        m_asOf = changes();
    if (key)
        m_ahead.remove(*key);
    return result;
}

qint64 PostgresKeyedRows::insert(const QStringList& columns, const Row& values) {
    return write(postgresGenerator().insertRow(*m_query.source->table, columns), values, {})
        .key(0, 0);
}

bool PostgresKeyedRows::update(qint64 key, const QStringList& columns, const Row& values) {
    return write(postgresGenerator().updateRow(*m_query.source->table, columns), values, key)
               .changedRows() > 0;
}

bool PostgresKeyedRows::remove(qint64 key) {
    return write(postgresGenerator().deleteRow(*m_query.source->table), {}, key).changedRows() > 0;
}

} // namespace tallyroom
