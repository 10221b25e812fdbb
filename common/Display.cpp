#include "common/Display.h"

#include <QtGlobal>
#include <xcb/xcb.h>

namespace tallyroom {

bool hasDisplay() {
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ||
        qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return true;
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        return false;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection); // also frees one that failed
    return answers;
}

} // namespace tallyroom
