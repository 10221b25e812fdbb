// Where the files of a site lie on a server. Known without the server's library, too.
#pragma once

#include <QStringList>

namespace tallyroom {

// A data folder on a server is written
//     postgresql://[user@]host[:port]/database/SITE[?parameters of libpq]
// and a file of it has "\" and its name behind that. A file is a schema of the database. No secret
// stands in an address, for hosts keep addresses in the open and messages show them.
inline constexpr qsizetype longestSite = 40; // characters of a name

struct ServerAddress {
    QString conninfo; // the server and the database, as libpq takes them
    QString site;     // as written; small letters and capitals make no difference
    QString schema;   // the file's: north_bcx
    QString shown;    // the address without parameters, for messages
};

// Whether a path speaks of a server at all, rightly or not.
bool isServerAddress(const QString& path);

// See Workspace::siteBeside().
QString addressBeside(const QString& address, const QString& ending);

// The schemas of all files of a site.
QStringList schemasOf(const QString& site);

// The address of a file. Raises 3044 (not of the form above, or with a password, which is not
// repeated) and 3024 (no file of a site has that name).
ServerAddress parseServerAddress(const QString& path);

} // namespace tallyroom
