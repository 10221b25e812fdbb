// Where an employee stood when an answer was recorded, as it was kept or as it must have been.
#pragma once

#include "audit/Standing.h"
#include "store/Database.h"

namespace tallyroom {

struct Stood {
    Standing::Snapshot board;
    int place = 0;     // from 1; 0: not on the board
    Variant seniority; // a number, or Null
    bool isRebuilt = false;
};

// Rebuilds what was not kept with the entry, or cannot be read: all employees with the totals of
// the present period, less the answers recorded later than the entry and itself; in the order of
// the stored ordering `order`, by total where that is empty. Raises what the database raises;
// throws BadRequest for an ordering that is none.
Stood readStanding(const QString& dataFolder, Database& host, Database& addIn,
                   const Standing::EntryKey& entry, const QString& order);

// The board that the answers of a command share; nothing where none was kept, or it cannot be read.
std::optional<Standing::Snapshot> snapshotOf(Database& addIn, const QString& command);

// What a rebuilt standing cannot know, as sentences.
QString whatRebuildingLacks();

} // namespace tallyroom
