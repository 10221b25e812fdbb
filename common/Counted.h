// How many there are of something, as it is said.
#pragma once

#include <QString>

namespace tallyroom {

// "1 person", "7 people".
inline QString counted(qint64 count, QStringView one, QStringView several) {
    return QString::number(count).append(u' ').append(count == 1 ? one : several);
}

} // namespace tallyroom
