// Days as the host's screens use them.
#pragma once

#include "host/HostData.h"

#include <QDate>

namespace tallyroom::host {

struct Period {
    QDate from;
    QDate to;
};

// The last day on which anything was recorded, as a sample of employees has it; today without one.
QDate lastRecordedDay(Database& database, const HostData& data);

// The condition that a date column lies in the period, which is written the right way round.
QString periodCondition(const QString& column, const Period& period);

// "03/31/2024"
QString shownDay(const Variant& date);
QString shownDay(QDate day);

} // namespace tallyroom::host
