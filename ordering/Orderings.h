// The stored user-defined orderings.
#pragma once

#include <QString>
#include <vector>

namespace tallyroom {

struct Ordering {
    QString descr;   // its name, unique
    QString details; // its elements, a settings text; may be empty
};

// All orderings by description. Raises what the database raises.
std::vector<Ordering> readOrderings(const QString& dataPath);

} // namespace tallyroom
