// What stands under the title of the printed board.
#pragma once

#include "setup/TotallingPeriod.h"
#include "store/Recordset.h"

#include <QStringList>

namespace tallyroom {

struct ReportDetails {
    std::optional<TotallingPeriod> period; // nothing: the totals cover all dates
    QString total;                         // what the Total column counts
    bool multiplied = false;
    QString ordering;      // "" for none
    QString canvassDate;   // as typed; what is no date is left out
    bool breakOut = false; // whether there is an amount of double time
    QString amount;        // as typed; what could not be recorded is left out
    QString doubleAmount;  // the same
    QString department;    // of all employees; "" where they have several
    int employees = 0;

    std::optional<Date> day() const; // the canvass date
    QStringList lines() const;
};

// The department that all these employees have in the rows of tlyrTemp; "" when they have several
// or none, or when somebody is not among the rows. Raises what the database raises.
QString sharedDepartment(Recordset& rows, const QStringList& codes);

} // namespace tallyroom
