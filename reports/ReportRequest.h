// What a report is asked for, at the command line or on a screen.
#pragma once

#include "reports/Period.h"

#include <functional>

namespace tallyroom {

enum class ReportKind { Standing, Calls, Checks, Fairness };

enum class GroupBy { Department, Shift, Classification };

// Who takes part; an empty text stands for all.
struct ReportGroup {
    QString department;    // code
    QString shift;         // code
    QString qualification; // code of any that is held
};

struct ReportRequest {
    ReportKind kind = ReportKind::Fairness;
    std::optional<Period> period; // without one the canvass period, else the last two weeks
    QDate date;                   // the day of the overtime: Standing, Calls
    QString start;                // Calls: when it begins, as typed
    QString hours;                // Calls: how long it lasts, as typed
    QString employee;             // Standing: whose
    ReportGroup group;
    QString order;                         // Calls: description of a stored ordering
    GroupBy groupBy = GroupBy::Department; // Fairness: whose spread is shown beside the whole's
};

// Told how far a report is, so many steps of so many; false ends it with `Cancelled`. Neither uses
// a database nor throws.
using ReportProgress = std::function<bool(int done, int of)>;

struct Cancelled {};

inline void requireNotCancelled(const ReportProgress& progress, int done, int of) {
    if (progress && !progress(done, of))
        throw Cancelled{};
}

// Thrown for a request that cannot be fulfilled as it stands.
struct BadRequest {
    QString text; // a sentence
};

} // namespace tallyroom
