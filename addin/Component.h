// The module as a component: start-up, classes, and whether it may be unloaded.
#pragma once

#include "common/HostInterface.h"

namespace tallyroom::Component {

// Runs the start-up routine on the first call in the process and does nothing later.
void startUpOnce();

// The factory of a creatable class, with one reference, or null for any other class.
IClassFactory* classFactory(const Guid& classId);

// False while an object, a factory or a lock is alive, and once windows have been made here for a
// host without a toolkit of its own: those cannot be taken down again.
bool canUnload();

// Write and remove the classes in the registry; statusSelfRegistration when it cannot be written.
Status registerClasses();
Status unregisterClasses();

// Makes sure that windows can be shown: uses the host's application object or, for a host that has
// none, makes one. Raises 429 when there is no display.
void requireDisplay();

} // namespace tallyroom::Component
