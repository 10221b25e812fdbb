// What an answer writes, and where.
#pragma once

#include "audit/Standing.h"
#include "common/AnswerKind.h"
#include "common/Dates.h"

namespace tallyroom {

struct AnswerRequest;

// One answer of one employee.
struct Answer {
    QString emp;
    QString rule;
    QString shift;
    QString absentCode;
    Date date; // the day of the overtime
    std::int32_t minutes;
    const AnswerKind& kind;
};

// The three writes of an answer. Making them raises 3075 for a text that no statement can hold, so
// that none of them is begun.
struct AnswerStatements {
    AnswerStatements(const Answer& answer, const AnswerRequest& request);

    Standing::EntryKey entry; // of the audit
    QString history;          // bcx.mdb: an absence transaction
    QString audit;            // aidb01.mdb
    QString board;            // vrlxdb01.mdb: the minutes of tlyrTemp
    QString employee;         // the code, as a literal
};

} // namespace tallyroom
