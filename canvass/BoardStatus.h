// What the line under the board says.
#pragma once

#include "setup/TotallingPeriod.h"

#include <QString>

namespace tallyroom {

// What other desks have done since the figures were counted.
struct AnswersElsewhere {
    int recorded = 0;
    int takenBack = 0;

    AnswersElsewhere& operator+=(const AnswersElsewhere& more) {
        recorded += more.recorded;
        takenBack += more.takenBack;
        return *this;
    }
};

// Each is a note to read, or empty.
struct BoardStatus {
    QString command;    // what became of the last one
    bool stale = false; // answers are written that the figures do not count
    AnswersElsewhere elsewhere;
    QString connection; // that it was lost
    QString user;       // why this user's answers cannot be recorded
    QString asked;      // why rows may lack the mark of who has been asked
    QString period;     // why the totals are not those of the stored period
    QString employees;  // who is left out
    QString orderings;  // which are left out

    // All that there is to say, what is newest first. What an answer would do takes the place of
    // what the last command did.
    QString text(const QString& offer) const;
};

// What the figures are.
struct BoardFigures {
    std::optional<TotallingPeriod> period; // nothing: they count all dates
    QString ordering;                      // its description; empty: none is in force
    int employees = 0;
    QString bucket; // empty: the host's choice of employees has no name
    QString user;

    QString text() const;
};

} // namespace tallyroom
