// Texts as they stand in a file for other programs.
#pragma once

#include <QString>

namespace tallyroom {

// The text without control characters and what is no character at all; lines are kept apart.
QString exportedText(const QString& text);

} // namespace tallyroom
