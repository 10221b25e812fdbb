#include "store/engine/Snapshot.h"

#include <utility>

namespace tallyroom {

void Snapshot::startWith(std::vector<Row> rows) {
    m_rows = std::move(rows);
    m_isRead = true;
    start();
}

void Snapshot::readRows() {
    m_search.reset();
    if (!std::exchange(m_isRead, false))
        m_rows = engine().readRows(bound());
}

const Row& Snapshot::rowAt(int position) const {
    return m_rows[static_cast<std::size_t>(position)];
}

int Snapshot::findRow(const sql::Expression& criteria) {
    if (!m_search)
        m_search = engine().searches()(bound().columns, m_rows);
    return m_search->find(criteria);
}

} // namespace tallyroom
