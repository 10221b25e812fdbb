// What the program is made of.
#pragma once

#include <QStringList>

namespace tallyroom::host {

// A name and a version a line, the program's own first, and last where the add-in's module is
// found: "module /usr/lib/tallyroom/tallyroom.so", or "module none" and why. Needs an application
// object; `moduleFile` is the one that the user names, if any.
QStringList versionLines(const QString& moduleFile);

} // namespace tallyroom::host
