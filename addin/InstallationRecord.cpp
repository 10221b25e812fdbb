#include "addin/InstallationRecord.h"

#include "common/Dates.h"

#include <tuple>

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
    std::ignore = registry.change([&](RegistryText& text) {
        text.deleteKey(key); // values of an earlier record must not stay
        const auto add = [&](const QString& name, const QString& value) {
            writeStringValue(text, key, {}, name, value);
        };
        add(QStringLiteral("Version"), application.version());
        add(QStringLiteral("Last Ran"), lastRan);
        add(QStringLiteral("Application Comments"), application.comments);
    });
}

void writeStringValue(RegistryText& registry, const QString& key, const QString& subKey,
                      const QString& name, const QString& text) {
    registry.setValue(key, subKey.isEmpty() ? name : QString(), text);
}

} // namespace tallyroom::InstallationRecord
