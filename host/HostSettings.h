// What the host keeps for its user from one start to the next.
#pragma once

#include <QSettings>

namespace tallyroom::host {

inline QSettings hostSettings() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Brightclock"),
                     QStringLiteral("Brightclock"));
}

} // namespace tallyroom::host
