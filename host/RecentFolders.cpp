#include "host/RecentFolders.h"

#include "store/Workspace.h"

#include <QFileInfo>
#include <QSettings>

namespace tallyroom::host::RecentFolders {

namespace {

constexpr qsizetype maximum = 10;
const QString foldersKey = QStringLiteral("RecentFolders");
const QString userKey = QStringLiteral("User");

QSettings settings() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Brightclock"),
                     QStringLiteral("Brightclock"));
}

} // namespace

QStringList all() {
    QStringList folders = settings().value(foldersKey).toStringList();
    folders.removeIf([](const QString& folder) {
        return !Workspace::isOnServer(folder) && !QFileInfo(folder).isDir();
    });
    return folders;
}

QString user() {
    return settings().value(userKey).toString();
}

void remember(const QString& folder, const QString& user) {
    QStringList folders = all();
    folders.removeAll(folder);
    folders.prepend(folder);
    QSettings kept(settings().fileName(), QSettings::IniFormat);
    kept.setValue(foldersKey, folders.mid(0, maximum));
    kept.setValue(userKey, user);
}

} // namespace tallyroom::host::RecentFolders
