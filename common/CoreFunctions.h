// Stand-ins for the host maker's closed helper library.
#pragma once

#include <QString>
#include <QStringList>

namespace tallyroom::CoreFunctions {

// Prepares the library. Nothing needs preparing here; the start-up routine calls it all the same.
void InitializeCF() noexcept;

// Index of the first entry that starts with `text`, without regard to case; −1 when there is none.
int FindInBox(const QStringList& entries, const QString& text);

// Width of the code column at the start of a list entry, in characters.
inline constexpr int codeWidth = 9;

// Code and description as one list entry; the code fills the first nine characters.
QString listEntry(const QString& code, const QString& description);

// The code at the start of a list entry.
QString GetCode(const QString& entry);

} // namespace tallyroom::CoreFunctions
