#include "store/Database.h"

#include "common/RunError.h"

#include <utility>

namespace tallyroom {

Transaction::Transaction(std::shared_ptr<Database> database, TransactionKind kind) {
    if (database->inTransaction())
        return;
    database->begin(kind);
    m_database = std::move(database);
}

Transaction::~Transaction() {
    if (m_database)
        m_database->rollback();
}

bool Transaction::commit() {
    const auto database = std::exchange(m_database, nullptr);
    return database && database->commit();
}

Impatience::Impatience(std::shared_ptr<Database> database) : m_database(std::move(database)) {
    m_database->setWhenInUse(WhenInUse::Fail);
}

Impatience::~Impatience() {
    try {
        m_database->setWhenInUse(WhenInUse::Wait);
    } catch (const RunError&) {
        // Closed in between: there is nothing left that could wait.
    }
}

} // namespace tallyroom
