// The patterns of the desktop engine's Like.
#pragma once

#include <QStringView>

namespace tallyroom {

// "*" stands for any characters, "?" for one, "#" for a digit, [a-z] and [!a-z] for one of a set
// or one outside it. Case does not count. A "[" that is never closed matches nothing.
bool matchesLike(QStringView text, QStringView pattern);

} // namespace tallyroom
