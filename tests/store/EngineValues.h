// Values over which the engines' functions are compared: edges, and others made up at random but
// the same in each run.
#pragma once

#include <QJsonArray>
#include <QList>

namespace tallyroom {

// Texts, numbers or Null, as many in a row as a function takes.
using Rows = QList<QJsonArray>;

Rows texts();
Rows textPairs(); // often the same but for case, and a third text
Rows patterns();  // a text, a pattern
Rows textParts(); // a text, a start, a count
Rows numberTexts();
Rows numbers();
Rows wholeNumbers();
Rows dates(); // "YYYY-MM-DD HH:MM:SS"
Rows dateTexts();

} // namespace tallyroom
