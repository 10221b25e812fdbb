// What desks that work on the same site tell each other.
#pragma once

#include <QString>

namespace tallyroom::DeskNews {

inline const QString answerRecorded = QStringLiteral("answer recorded");
inline const QString answerTakenBack = QStringLiteral("answer taken back");
inline const QString contactRecorded = QStringLiteral("contact recorded");

} // namespace tallyroom::DeskNews
