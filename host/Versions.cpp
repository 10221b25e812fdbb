#include "host/Versions.h"

#include "common/RunError.h"
#include "common/TextOrder.h"
#include "host/AddInModule.h"
#include "store/Workspace.h"

namespace tallyroom::host {

namespace {

QString moduleLine(const QString& moduleFile) {
    try {
        return QStringLiteral("module ") + findModule(moduleFile);
    } catch (const RunError& error) {
        return QStringLiteral("module none: ") + error.description();
    }
}

} // namespace

QStringList versionLines(const QString& moduleFile) {
    QStringList lines{QStringLiteral("brightclock %1.%2.%3")
                          .arg(TALLYROOM_VERSION_MAJOR)
                          .arg(TALLYROOM_VERSION_MINOR)
                          .arg(TALLYROOM_VERSION_PATCH),
                      QStringLiteral("Qt ") + QString::fromLatin1(qVersion())};
    lines << Workspace::engineVersions() << QStringLiteral("ICU ") + TextOrder::version()
          << moduleLine(moduleFile);
    return lines;
}

} // namespace tallyroom::host
