// Opening databases by the paths that the host gives.
#pragma once

#include "store/Database.h"
#include "store/Schema.h"

#include <QString>
#include <memory>

namespace tallyroom::Workspace {

// The engines' libraries and their versions: "SQLite 3.40.1", "libpq 15.14". Without the last one
// there are no sites.
QStringList engineVersions();

// Whether a data folder is a site on a server, as far as its beginning tells.
bool isOnServer(const QString& dataPath);

// The address of another site beside a site, named as it and with the ending. A name that would be
// too long for a site is cut before the ending.
QString siteBeside(const QString& address, const QString& ending);

// Opens the database file at `path` for reading and writing. "\" and "/" both separate folders,
// and names are found without regard to case. A data folder may be a site on a server, written
// postgresql://[user@]host[:port]/database/SITE[?parameters]. Raises 3024 (no such file), 3044 (no
// such folder), 3343 (not a database), 3051 (no permission), and for a server 3151 (no connection),
// 3029 (login refused), 3033 (no permission). Never creates a file.
std::shared_ptr<Database> openDatabase(const QString& path, WhenInUse answer = WhenInUse::Wait);

// The native path of the file that such a path stands for. Raises 3024 and 3044 as opening it does.
QString resolveFile(const QString& path);

// The same for the three files of the host's data folder: aidb01.mdb, vrlxdb01.mdb and bcx.mdb.
std::shared_ptr<Database> openAddIn(const QString& dataPath, WhenInUse answer = WhenInUse::Wait);
std::shared_ptr<Database> openMain(const QString& dataPath, WhenInUse answer = WhenInUse::Wait);
std::shared_ptr<Database> openHostOptions(const QString& dataPath);

// Creates files with their tables and indexes in an existing folder, which is a native path, or as
// a site on a server. Files can be read and written by their owner and group, as far as the
// process's mask allows, and by nobody else. `fill` may then open them and write rows; on a server
// nobody else sees the site before it is done. Raises 3204 when one of the files is there already,
// and what `fill` raises; all is then as it was.
void createFiles(
    const QString& folder, const std::function<void()>& fill = [] {},
    std::span<const Schema::File> files = Schema::files());

// What the files of a folder or a site lack that an older version did not make: a line for each
// table, and for each text that has become wider. Raises what opening a file raises.
QStringList lackingIn(const QString& dataPath);
// Adds it, and missing indexes. Each file gets all or nothing. Raises 3196 while somebody works on
// a file as well, and 3033 for who may not change a site.
void completeFiles(const QString& dataPath);

} // namespace tallyroom::Workspace
