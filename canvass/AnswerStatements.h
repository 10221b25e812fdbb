// What an answer writes, and where.
#pragma once

#include "common/Dates.h"

#include <QString>

namespace tallyroom {

struct AnswerRequest;

// Where the minutes of one kind of answer go.
struct AnswerColumns {
    const char16_t* association; // column of tlyr_assoc that holds the absent code
    const char16_t* history;     // column of TimeHistory
    const char16_t* board;       // column of tlyrTemp
    bool accepted;
};

inline constexpr AnswerColumns plainAccepted{u"Accepted", u"tlyrAccepted", u"xT15Accepted", true};
inline constexpr AnswerColumns plainDeclined{u"Declined", u"tlyrDeclined", u"xT15Declined", false};
inline constexpr AnswerColumns accepted15{u"Accepted", u"tlyrAccepted", u"xt15Accepted", true};
inline constexpr AnswerColumns accepted20{u"Accepted2", u"tlyrAccepted2", u"xt20Accepted", true};
inline constexpr AnswerColumns declined15{u"Declined", u"tlyrDeclined", u"xt15Declined", false};
inline constexpr AnswerColumns declined20{u"Declined2", u"tlyrDeclined2", u"xt20Declined", false};

// One answer of one employee.
struct Answer {
    QString emp;
    QString rule;
    QString shift;
    QString absentCode;
    Date date; // the day of the overtime
    std::int32_t minutes;
    const AnswerColumns& columns;
};

// The three writes of an answer. Making them raises 3075 for a text that no statement can hold, so
// that none of them is begun.
struct AnswerStatements {
    AnswerStatements(const Answer& answer, const AnswerRequest& request);

    QString history;  // bcx.mdb: an absence transaction
    QString audit;    // aidb01.mdb
    QString board;    // vrlxdb01.mdb: the minutes of tlyrTemp
    QString employee; // the code, as a literal
};

} // namespace tallyroom
