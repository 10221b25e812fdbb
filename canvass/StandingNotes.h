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

    // The audit's statement and what is kept along with it; the former alone once keeping failed,
    // and for who was not on the board.
    QStringList with(const QString& auditInsert, const Standing::EntryKey& entry);

    // Statements given out by with() are written. What they are not is not tried again.
    void noteWritten() { m_hasSnapshot = true; }
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
