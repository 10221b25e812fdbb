#include "addin/InstallationRecord.h"

#include "common/Dates.h"

namespace tallyroom::InstallationRecord {

namespace {

const QString installedLibraries =
    QStringLiteral("Software\\Vorelax Inc.\\Installed Dynamic Link Libraries\\");

QString folderOf(const ApplicationInfo& application) {
    QString folder = application.path;
    folder.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    return folder.toLower();
}

} // namespace

QString keyOf(const QString& category, const ApplicationInfo& application, const QString& kind) {
    const QString file = application.fileName + QLatin1Char('.') + kind;
    return installedLibraries + category.trimmed() + QLatin1Char('\\') + folderOf(application) +
           file.toUpper();
}

void write(Registry& registry, const QString& category, const ApplicationInfo& application,
           const QString& kind) {
    const QString key = keyOf(category, application, kind);
    const QString lastRan =
        Dates::format(Dates::now(), QStringLiteral("dddd mmmm dd, yyyy at hh:nn:ss am/pm"));
    registry.deleteKey(key); // values of an earlier record must not stay
    if (!registry.createKey(key))
        return;
    writeStringValue(registry, key, {}, QStringLiteral("Version"), application.version());
    writeStringValue(registry, key, {}, QStringLiteral("Last Ran"), lastRan);
    writeStringValue(registry, key, {}, QStringLiteral("Application Comments"),
                     application.comments);
}

bool writeStringValue(Registry& registry, const QString& key, const QString& subKey,
                      const QString& name, const QString& text) {
    return registry.setValue(key, subKey.isEmpty() ? name : QString(), text);
}

} // namespace tallyroom::InstallationRecord
