// One line of the undo list. Its fixed columns are the contract between filling the list and
// undoing an entry of it, so both directions are here.
#pragma once

#include "common/AnswerKind.h"
#include "common/Dates.h"

#include <optional>

namespace tallyroom {

struct UndoLine {
    QString code;             // at most nine characters keep their place
    std::optional<Date> date; // the canvass date; an entry without one cannot be taken back
    AuditAction action = AuditAction::Accepted; // or Declined
    std::optional<Rate> rate;                   // in the broken-out view only
    std::optional<int> minutes;                 // as the date

    // "E17         02/03/2020   Accepted 1.5   01:30", the rate in the broken-out view only.
    QString text() const;

    // The code alone, whatever else the line lacks.
    static QString codeIn(const QString& text);

    // Reads a line back. Raises 13 when it holds no date or no time in its place.
    static UndoLine fromText(const QString& text, bool breakOut);

    // The audit entries that the line may stand for, as a criterion of a search. The line must have
    // a date and minutes. Raises 3077 for a code with an apostrophe.
    QString criterion() const;
};

} // namespace tallyroom
