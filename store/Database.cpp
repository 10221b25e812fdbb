#include "store/Database.h"

#include "common/RunError.h"

namespace tallyroom {

void Database::executeAll(const QStringList& updates, qsizetype& done) {
    if (executeAsOne(updates.mid(done)))
        done = updates.size();
    for (; done < updates.size(); ++done)
        execute(updates.at(done));
}

Batch::Batch(std::shared_ptr<Database> database) {
    if (!database || database->inBatch())
        return;
    database->beginBatch();
    m_database = std::move(database);
}

Batch::~Batch() {
    try {
        commit();
    } catch (const RunError&) {
        // Only reached on the way out of a failed command, whose own error is reported; callers
        // that go on end the batch with commit().
    }
}

void Batch::commit() {
    if (const auto database = std::exchange(m_database, nullptr))
        database->commitBatch();
}

Reading::Reading(std::shared_ptr<Database> database)
    : m_database(std::move(database)), m_began(m_database->beginReading()) {}

Reading::~Reading() {
    if (!m_began)
        return;
    try {
        m_database->endReading();
    } catch (const RunError&) {
        // Closed in between, which has ended the reading.
    }
}

} // namespace tallyroom
