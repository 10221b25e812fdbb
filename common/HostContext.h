// What the host gave the add-in when it opened it.
#pragma once

#include "common/Objects.h"

#include <QString>

namespace tallyroom {

// One instance for the process, filled by the entry class and read by every window. The objects
// belong to the host; the references only keep them alive.
struct HostContext {
    QString DataPath; // folder of the three database files, as the host writes it
    ObjectRef BucketForm;
    ObjectRef DatePickerForm;
    ObjectRef HostMenuForm;
    ObjectRef SplashPicture;
    QString CurrentUser;

    // Exactly the name "master" in any case. The name for "no user given", "*Master*", is another
    // one on purpose: a call without a user gets ordinary rights.
    bool isMaster() const { return CurrentUser.toLower() == QLatin1String("master"); }
};

} // namespace tallyroom
