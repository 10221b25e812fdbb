// The stored user-defined orderings.
#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace tallyroom {

struct Ordering {
    QString descr;   // its name, unique
    QString details; // its elements, a settings text; may be empty
};

// All routines take the host's data folder and raise what the database raises. Descriptions go into
// the statements as they are: one with an apostrophe is refused (3075, 3077 in add and change).
namespace Orderings {

// All orderings by description. One whose description cannot be read is left out; details that
// cannot are empty.
struct Stored {
    std::vector<Ordering> orderings;
    int unreadable = 0; // rows left out
};
Stored readAll(const QString& dataPath);

// The ordering of this description; nothing when there is none.
std::optional<Ordering> read(const QString& dataPath, const QString& descr);

enum class SaveResult { Saved, Duplicate, NotFound };

// Adds an ordering, unless one of this description (blanks at its ends apart) is there already.
[[nodiscard]] SaveResult add(const QString& dataPath, const Ordering& ordering);
// Replaces the details of the ordering of this description.
[[nodiscard]] SaveResult change(const QString& dataPath, const Ordering& ordering);

// Removes every ordering of exactly this description.
void remove(const QString& dataPath, const QString& descr);

} // namespace Orderings
} // namespace tallyroom
