// The module's four entry points; see HostInterface.h for what they promise.
#include "addin/Component.h"

#include <exception>

using namespace tallyroom;

#define TALLYROOM_EXPORT extern "C" __attribute__((visibility("default")))

TALLYROOM_EXPORT Status DllGetClassObject(const Guid* classId, const Guid* interfaceId,
                                          void** object) {
    if (!classId || !interfaceId || !object)
        return statusPointer;
    *object = nullptr;
    try {
        Component::startUpOnce();
        if (*interfaceId != interfaceClassFactory)
            return statusNoInterface;
        *object = Component::classFactory(*classId);
        return *object ? statusOk : statusClassNotAvailable;
    } catch (const std::exception&) {
        return statusFail;
    }
}

TALLYROOM_EXPORT Status DllCanUnloadNow() {
    return Component::canUnload() ? statusOk : statusFalse;
}

// Hosts find the module by its file; there is no registry of classes to write to.
TALLYROOM_EXPORT Status DllRegisterServer() {
    return statusSelfRegistration;
}

TALLYROOM_EXPORT Status DllUnregisterServer() {
    return statusSelfRegistration;
}
