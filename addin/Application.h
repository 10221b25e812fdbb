// What the module knows of itself: where it lies and which version it is.
#pragma once

#include "common/Objects.h"

#include <QString>

namespace tallyroom {

struct ApplicationInfo {
    QString file;     // the module's file, with its folder
    QString path;     // its folder
    QString fileName; // without its extension
    QString title;
    QString comments;
    int major = 0;
    int minor = 0;
    int revision = 0;

    // major "." minor "." revision, each without leading zeros
    QString version() const;
};

const ApplicationInfo& applicationInfo();

// The same for hosts: properties Path, EXEName, Title, Comments, Major, Minor and Revision.
class ApplicationObject : public LateBoundObject {
public:
    ApplicationObject();
};

} // namespace tallyroom
