// What a window remembers for its user: its states as a text, and back.
#pragma once

#include <QString>
#include <QWidget>

namespace tallyroom::FormOptions {

// The remembered states of the window, as the text that is kept for its user: a checksum and JSON,
// scrambled with a repeating key and written as hexadecimal. The scrambling keeps the text from
// being edited by chance; it protects no secret. A window of which nothing is remembered gives "".
QString textOf(const QWidget& window);

// Gives the window the states of a text of textOf(). A text that is damaged or belongs to another
// window changes nothing, nor does a state that the window cannot take (an ordering that has gone).
// No handler runs.
void restore(QWidget& window, const QString& text);

} // namespace tallyroom::FormOptions
