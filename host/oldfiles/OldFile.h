// Reading a file of the old desktop engine.
#pragma once

#include "host/oldfiles/OldValue.h"

namespace tallyroom::host {

class OldFile {
public:
    virtual ~OldFile() = default;

    // The users' tables in the order of the catalogue, the engine's own left out. Throws
    // OldFileRefused for a file that cannot be read whole, a table that lies elsewhere included.
    virtual std::vector<OldTable> tables() = 0;

    // Gives all rows of a table in portions; returns how many the file itself says that there are.
    // Throws OldFileRefused when a row or a value cannot be read.
    virtual qint64 readRows(const OldTable& table, const TakeOldRows& take) = 0;

    // Throws OldFileRefused when somebody has written to the file since.
    virtual void requireUnchanged() const {}
};

} // namespace tallyroom::host
