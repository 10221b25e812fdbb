// Bringing over a folder whose files are those of the old desktop engine.
#pragma once

#include "host/copy/DataCopy.h"

namespace tallyroom::host {

// Whether one of the folder's three files begins with that engine's mark. False for a site, and for
// what cannot be read.
bool isOldFolder(const QString& dataPath);

// Raises 3343 for such a folder, with the command that brings it over.
void refuseOldFolder(const QString& dataPath);

// As copyData(): the copy appears complete or not at all, and the old files are only read. What is
// not the same in the copy is said, and written to a report beside it, or for a site into the
// current folder; at last the data are checked. Raises besides what CopyReport and OldSource do,
// 3024 for a file that is missing. For the code page see OldFileProcess. Needs a QCoreApplication.
void copyOldData(const QString& from, const QString& to, int codePage,
                 const CopyMessages& messages);

} // namespace tallyroom::host
