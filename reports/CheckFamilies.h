// The checks, a family a file. Each adds what it has checked to the findings.
#pragma once

#include "reports/CheckedData.h"
#include "reports/Findings.h"

namespace tallyroom {

// Answers by themselves: several for one date, outside the totalling period, unusual, on a day of
// absence.
void checkAnswers(const CheckedData& data, Findings& findings);

// The history and the audit against each other.
void checkTransactions(const CheckedData& data, Findings& findings);

// Who was asked while somebody above him had not been, from what was kept of the board with the
// answers. Raises what the database raises; throws Cancelled.
void checkTurns(const CheckedData& data, Database& addIn, Findings& findings,
                const ReportProgress& progress);

// Codes that nobody has any more, and codes that hinder recording or counting.
void checkCodes(const CheckedData& data, Database& host, Database& addIn, Findings& findings);

} // namespace tallyroom
