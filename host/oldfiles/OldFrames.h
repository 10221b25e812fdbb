// What the program that reads old files tells the one that copies them: frames of bytes over a
// pipe, which are not trusted.
#pragma once

#include "host/oldfiles/OldValue.h"

#include <optional>

namespace tallyroom::host::OldFrames {

struct End {
    qint64 countedRows = 0; // by the file itself
};

using Frame = std::variant<std::vector<OldTable>, std::vector<OldRow>, End, OldFileRefused>;

// A frame with its size before it.
QByteArray written(const Frame& frame);

// Takes the first frame away from what has come; nothing while it is not whole. Throws
// OldFileRefused (Damaged) for bytes that are no frame.
std::optional<Frame> taken(QByteArray& bytes);

} // namespace tallyroom::host::OldFrames
