// The component's version, for hosts.
#pragma once

#include "common/Objects.h"

namespace tallyroom {

// Function `dllVersion`: see ApplicationInfo::version().
class MemberInfo : public LateBoundObject {
public:
    MemberInfo();
};

} // namespace tallyroom
