// Telling hosts through the registry where the module's classes are.
#pragma once

#include "addin/Application.h"
#include "addin/Registry.h"
#include "common/HostInterface.h"

namespace tallyroom::ClassRegistration {

// Writes, for each creatable class, "Software\Classes\Tallyroom.<class>\CLSID" (the class
// identifier) and "Software\Classes\CLSID\<identifier>\InprocServer32" (the module's file) as
// default values. False when the registry cannot be written.
[[nodiscard]] bool add(Registry& registry, const ApplicationInfo& application);

// Removes what add() wrote. False when the registry cannot be written; a class that is not there is
// no failure.
[[nodiscard]] bool remove(Registry& registry);

// "{6B1F5C52-3B0E-4C57-9A41-702D15E8B001}"
QString guidText(const Guid& guid);

} // namespace tallyroom::ClassRegistration
