// What demonstration data are to be made.
#pragma once

#include <QDate>
#include <QString>

namespace tallyroom::host {

struct DemoSettings {
    QString folder; // a folder that is missing or empty, or the address of a new site
    int employees = 300;
    int days = 365;
    quint32 seed = 1;
    QDate end;             // last day of the history
    bool firstRun = false; // leave out what users of the add-in set up and recorded
    bool bare = false;     // tables without rows
};

// The same settings give the same rows.
inline constexpr int maximumEmployees = 50000;
inline constexpr int maximumDays = 3660;

} // namespace tallyroom::host
