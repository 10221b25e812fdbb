// Copying a data folder, or a site on a server, to a new one of either kind.
#pragma once

#include "host/copy/CopySource.h"

#include <QString>
#include <functional>

namespace tallyroom::host {

struct CopyMessages {
    std::function<void(const QString& line)> say;      // what has been done
    std::function<void(const QString& line)> progress; // what is being done, again and again
};

// Copies all tables of the three files but the boards' scratch table, as they stand at one moment,
// reads the copy again and compares it table by table. While a folder is copied, others can read it
// but not write to it. The copy appears complete or not at all, and never in place of something;
// see makeData(). Raises besides 3421 for what the copy cannot hold, and 3049 for a copy that has
// other rows than the source.
void copyData(const QString& from, const QString& to, const CopyMessages& messages);

struct CopiedSource {
    const Schema::File& file;
    std::unique_ptr<CopySource> source;
};

// The same from whatever the three files come from.
void copySources(const std::vector<CopiedSource>& sources, const QString& to,
                 const CopyMessages& messages);

} // namespace tallyroom::host
