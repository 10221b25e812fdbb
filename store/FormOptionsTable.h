// Where the host keeps what windows remember, for each user and window.
#pragma once

#include <QString>

namespace tallyroom::FormOptionsTable {

// The text kept for the user and window; that of the user "MASTER", which holds the defaults, when
// the user has none of his own; "" when there is neither. User names compare without regard to
// case, so what the master user leaves is what everybody starts from.
//
// What windows remember is a convenience that must stop neither the start of a window nor its end:
// every error of the database counts as nothing remembered, and is not reported.
QString read(const QString& dataPath, const QString& user, const QString& form) noexcept;

// Keeps the text in place of what was kept before. An error leaves that as it was, silently.
void write(const QString& dataPath, const QString& user, const QString& form,
           const QString& text) noexcept;

} // namespace tallyroom::FormOptionsTable
