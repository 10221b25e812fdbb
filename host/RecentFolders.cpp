#include "host/RecentFolders.h"

#include "host/HostSettings.h"
#include "store/Workspace.h"

#include <QFileInfo>

namespace tallyroom::host::RecentFolders {

namespace {

constexpr qsizetype maximum = 10;
const QString foldersKey = QStringLiteral("RecentFolders");
const QString userKey = QStringLiteral("User");

} // namespace

QStringList all() {
    QStringList folders = hostSettings().value(foldersKey).toStringList();
    folders.removeIf([](const QString& folder) {
        return !Workspace::isOnServer(folder) && !QFileInfo(folder).isDir();
    });
    return folders;
}

QString user() {
    return hostSettings().value(userKey).toString();
}

void remember(const QString& folder, const QString& user) {
    QStringList folders = all();
    folders.removeAll(folder);
    folders.prepend(folder);
    QSettings kept = hostSettings();
    kept.setValue(foldersKey, folders.mid(0, maximum));
    kept.setValue(userKey, user);
}

} // namespace tallyroom::host::RecentFolders
