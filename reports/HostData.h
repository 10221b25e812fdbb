// What the host knows about its employees, read from its options database.
#pragma once

#include "store/Database.h"
#include "store/Recordset.h"

#include <QHash>
#include <QStringList>
#include <vector>

namespace tallyroom {

struct Employee {
    QString code;
    QString name;
    QString department;
    QString shift;
    QStringList qualifications;
};

struct Shift {
    QString code;
    QString description;
    QString hours; // "07:00 - 15:30"
};

// The tables that change rarely, read once.
struct HostData {
    std::vector<Employee> employees;     // by code
    QHash<QString, QString> departments; // code to description
    std::vector<Shift> shifts;           // by code

    QString employeeName(const QString& code) const;
    QString departmentName(const QString& code) const; // the code itself when it has none
    QString shiftHours(const QString& code) const;
};

HostData readHostData(Database& database);

// "07:00"; Null is "".
QString shownTime(const Variant& time);

// Text of a field; Null is "".
QString fieldText(const Recordset& rows, const QString& name);

} // namespace tallyroom
