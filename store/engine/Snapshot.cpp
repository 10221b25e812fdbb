#include "store/engine/Snapshot.h"

namespace tallyroom {

void Snapshot::readRows() {
    m_search.reset();
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
