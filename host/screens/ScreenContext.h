// What the host's screens work on.
#pragma once

#include "reports/HostData.h"

namespace tallyroom::host {

struct ScreenContext {
    std::shared_ptr<Database> database; // bcx.mdb
    const HostData& data;               // must outlive the screen
    QString dataFolder;
    QString user; // empty when the host has no users
};

} // namespace tallyroom::host
