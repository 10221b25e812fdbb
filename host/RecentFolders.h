// What the host remembers of its own between starts, for the person at the machine.
#pragma once

#include <QStringList>

namespace tallyroom::host::RecentFolders {

// The folders and sites worked on last, the latest first; folders that have gone are left out.
QStringList all();
QString user(); // the name given last

void remember(const QString& folder, const QString& user);

} // namespace tallyroom::host::RecentFolders
