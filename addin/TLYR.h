// The class that the host creates and calls.
#pragma once

#include "common/HostContext.h"

namespace tallyroom {

// Methods, each with one array argument: `Smallforge`, which does nothing, and `TLYRShow`, which
// fills the host context and shows the main window until the user closes it.
//
// The array of TLYRShow holds, counted from its lower bound: data folder (text), bucket form,
// date-picker form, main menu form, splash picture box (objects), user name (text; when missing or
// empty the user is "*Master*"). A wrong one of the first five raises 13, 9 or 424 to the host, and
// what was copied before stays.
class TLYR : public LateBoundObject {
public:
    explicit TLYR(HostContext& context);

private:
    void TLYRShow(const Variant& argument);

    HostContext& m_context;
};

} // namespace tallyroom
