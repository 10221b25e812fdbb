// What a window remembers for its user: its states as a text, and back.
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

namespace tallyroom::WindowMemory {

// What is remembered of a window: of an action or a button its check mark; of a menu or a panel
// which of its entries or option buttons is chosen; of the window itself its size, and whether it
// fills the screen. Each has an object name of its own, under which its state is kept.
//
// All else opens as it was designed, on purpose:
// - amounts and dates, and the audit's date filters: last week's would be recorded, or would hide
//   entries, unseen;
// - the rows and users that are selected: they are other ones by then;
// - column widths, which follow the texts, and window positions, which belong to the desktop;
// - what the data files keep: associations, period, the definitions of orderings; the windows that
//   set these up are as large as their contents.
using Remembered = std::vector<QObject*>;

// The remembered states of the window, as the text that is kept for its user: a checksum and JSON,
// scrambled with a repeating key and written as hexadecimal. The scrambling keeps the text from
// being edited by chance; it protects no secret.
QString textOf(const QWidget& window, const Remembered& remembered);

// Gives the window the states of a text of textOf(). A text that is damaged or belongs to another
// window changes nothing, nor does a state that the window cannot take (an ordering that has gone).
// No handler runs.
void restore(QWidget& window, const Remembered& remembered, const QString& text);

} // namespace tallyroom::WindowMemory
