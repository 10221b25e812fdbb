// What one command of answers keeps of where its employees stood.
#pragma once

#include "audit/Standing.h"
#include "common/RunError.h"
#include "store/Database.h"

#include <QHash>

namespace tallyroom {

class StandingNotes {
public:
    // Without a snapshot nothing is kept, and nothing said about it. It must outlive this.
    explicit StandingNotes(const std::optional<Standing::Snapshot>& board);

    // Of the employee whose answers are about to be written: `row` is his row of tlyrTemp as it is
    // before them.
    void beginEmployee(const QString& code, const Recordset& row);

    // Writes an entry and where its employee stood into aidb01.mdb, in a transaction that is open.
    // False, and nothing is written: the entry has to be written alone. So it is for who was not on
    // the board, and once keeping failed.
    [[nodiscard]] bool write(Database& addIn, const QString& auditInsert,
                             const Standing::EntryKey& entry);
    // What write() has written is kept, or has been undone for this.
    void noteKept() { m_hasSnapshot = true; }
    void noteFailure(const RunError& error) { m_failure = error; }

    // What kept something from being kept.
    const std::optional<RunError>& failure() const { return m_failure; }

private:
    const std::optional<Standing::Snapshot>& m_board;
    QHash<QString, int> m_places; // by code, from 1
    Standing::Place m_place;      // of the employee
    bool m_hasSnapshot = false;
    std::optional<RunError> m_failure;
};

} // namespace tallyroom
