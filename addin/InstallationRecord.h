// What the add-in records about itself in the registry each time it is loaded.
#pragma once

#include "addin/Application.h"
#include "addin/Registry.h"

namespace tallyroom::InstallationRecord {

// The registry key of a component: category, folder in lower case with forward slashes, and file
// name with its kind in upper case.
QString keyOf(const QString& category, const ApplicationInfo& application, const QString& kind);

// Replaces the record of the component by a new one: version, time of this load, comments. A
// registry that cannot be written keeps what it has, and nobody is told.
void write(Registry& registry, const QString& category, const ApplicationInfo& application,
           const QString& kind);

// Writes a text into a key. Only an empty subKey makes the value go under its name; with any other
// one the text becomes the key's default value and the subKey is left unused.
void writeStringValue(RegistryText& registry, const QString& key, const QString& subKey,
                      const QString& name, const QString& text);

} // namespace tallyroom::InstallationRecord
