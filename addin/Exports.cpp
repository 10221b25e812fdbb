// The module's four entry points; see HostInterface.h for what they promise.
#include "addin/Component.h"

#include <exception>
#include <new>

using namespace tallyroom;

#define TALLYROOM_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

// No exception leaves the module.
template<class Work>
Status guarded(const Work& work) noexcept {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return statusOutOfMemory;
    } catch (const std::exception&) {
        return statusFail;
    }
}

} // namespace

TALLYROOM_EXPORT Status DllGetClassObject(const Guid* classId, const Guid* interfaceId,
                                          void** object) {
    if (!classId || !interfaceId || !object)
        return statusPointer;
    *object = nullptr;
    return guarded([&] {
        Component::startUpOnce();
        if (*interfaceId != interfaceClassFactory)
            return statusNoInterface;
        *object = Component::classFactory(*classId);
        return *object ? statusOk : statusClassNotAvailable;
    });
}

TALLYROOM_EXPORT Status DllCanUnloadNow() {
    return Component::canUnload() ? statusOk : statusFalse;
}

TALLYROOM_EXPORT Status DllRegisterServer() {
    return guarded(Component::registerClasses);
}

TALLYROOM_EXPORT Status DllUnregisterServer() {
    return guarded(Component::unregisterClasses);
}
