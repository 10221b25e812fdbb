#include "host/copy/Upgrade.h"

#include "common/RunError.h"
#include "store/Workspace.h"

namespace tallyroom::host {

void upgradeData(const QString& dataPath, const CopyMessages& messages) {
    const QStringList lacking = Workspace::lackingIn(dataPath);
    if (!lacking.isEmpty()) {
        const QString copy = copyBefore(dataPath, QDateTime::currentDateTime());
        messages.say(QStringLiteral("The data as they are go to %1:").arg(copy));
        copyData(dataPath, copy, messages);
    }
    Workspace::completeFiles(dataPath);
    if (const QStringList left = Workspace::lackingIn(dataPath); !left.isEmpty())
        throw RunError(
            ErrorNumber::readOnly,
            QStringLiteral("This could not be done: %1.").arg(left.join(QStringLiteral("; "))),
            QStringLiteral("Brightclock"));
    for (const QString& line : lacking)
        messages.say(line);
    if (lacking.isEmpty())
        messages.say(QStringLiteral("Nothing was missing."));
}

QString copyBefore(const QString& dataPath, const QDateTime& moment) {
    const QString stamp = moment.toString(QStringLiteral("yyyyMMdd-HHmm"));
    if (!Workspace::isOnServer(dataPath))
        return dataPath + QStringLiteral(".before-upgrade-") + stamp;
    return Workspace::siteBeside(dataPath, u'-' + stamp);
}

} // namespace tallyroom::host
