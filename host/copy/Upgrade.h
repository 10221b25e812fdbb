// Bringing data that an older version has made up to this one.
#pragma once

#include "host/copy/DataCopy.h"

#include <QDateTime>

namespace tallyroom::host {

// Copies the data beside themselves and compares the copy; then adds the tables that are missing
// and widens what has become wider. Data that lack nothing are not copied. Raises what copying and
// Workspace::completeFiles() raise.
void upgradeData(const QString& dataPath, const CopyMessages& messages);

// Where the copy goes: "/data/north.before-upgrade-20261122-1023", ".../north-20261122-1023" for a
// site.
QString copyBefore(const QString& dataPath, const QDateTime& moment);

} // namespace tallyroom::host
