// Opening databases by the paths that the host gives.
#pragma once

#include "store/Database.h"

#include <QString>
#include <memory>

namespace tallyroom::Workspace {

// Opens the database file at `path` for reading and writing. "\" and "/" both separate folders,
// and names are found without regard to case. A data folder may be a site on a server, written
// postgresql://[user@]host[:port]/database/SITE[?parameters]. Raises 3024 (no such file), 3044 (no
// such folder), 3343 (not a database), 3051 (no permission), and for a server 3151 (no connection),
// 3029 (login refused), 3033 (no permission). Never creates a file.
std::shared_ptr<Database> openDatabase(const QString& path, WhenInUse answer = WhenInUse::Wait);

// The same for the three files of the host's data folder: aidb01.mdb, vrlxdb01.mdb and bcx.mdb.
std::shared_ptr<Database> openAddIn(const QString& dataPath, WhenInUse answer = WhenInUse::Wait);
std::shared_ptr<Database> openMain(const QString& dataPath, WhenInUse answer = WhenInUse::Wait);
std::shared_ptr<Database> openHostOptions(const QString& dataPath);

// Creates the three files with their tables and indexes in an existing folder, which is a native
// path, or a site on a server. Raises 3204 when one of the files is there already, and then leaves
// all as it was.
void createFiles(const QString& folder);

} // namespace tallyroom::Workspace
