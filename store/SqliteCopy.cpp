#include "store/SqliteCopy.h"

#include "store/SqliteGenerator.h"

namespace tallyroom {

void SqliteCopy::readRows() {
    m_rows.clear();
    m_search.reset();
    const std::vector<sql::BoundColumn>& columns = bound().columns;
    SqliteQuery query(sqlite().connection(), generator().rows(bound()));
    while (query.next()) {
        Row row;
        row.reserve(columns.size());
        for (const sql::BoundColumn& column : columns)
            row.push_back(query.value(static_cast<int>(row.size()), column.value->type));
        m_rows.push_back(std::move(row));
    }
}

const Row& SqliteCopy::rowAt(int position) const {
    return m_rows[static_cast<std::size_t>(position)];
}

int SqliteCopy::findRow(const sql::Expression& criteria) {
    if (!m_search)
        m_search = std::make_unique<CopySearch>(bound().columns, m_rows);
    return m_search->find(criteria);
}

} // namespace tallyroom
