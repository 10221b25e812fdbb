// What an add-in says that can be called.
#pragma once

#include "common/Objects.h"

#include <QString>
#include <vector>

namespace tallyroom::host {

// One entry of an add-in's self-description.
struct AddInEntry {
    QString member;                       // the class that has the method
    QString callName;                     // the method to call
    QString caption;                      // what the user sees
    QString securityTag;                  // who may call it, as the host's administrators know it
    std::int32_t type = 0;                // 0: a screen of the user's; others serve maintenance
    std::int32_t location = 0;            // where the add-in would like the entry to be
    std::vector<std::int32_t> parameters; // kinds of value that the call wants, in order
};

// Walks the members of a descriptor and their entries, in order. Raises what the add-in reports.
std::vector<AddInEntry> readEntries(const ObjectRef& descriptor);

} // namespace tallyroom::host
