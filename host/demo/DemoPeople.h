// Employees, departments, shifts and the other codes of the demonstration company.
#pragma once

#include "host/demo/DemoSettings.h"

#include <QRandomGenerator>
#include <QStringList>
#include <optional>
#include <span>
#include <vector>

namespace tallyroom {
class Database;
}

namespace tallyroom::host {

struct DemoShift {
    const char* code;
    const char* rule;
    const char* description;
    int start;    // minutes after midnight
    int length;   // minutes; may run over midnight
    int workDays; // bit n is day n of the week, Monday being 0
    bool worksOn(QDate day) const { return (workDays >> (day.dayOfWeek() - 1)) & 1; }
};

struct DemoPerson {
    QString code;
    QString name;
    QString department;
    const DemoShift* shift = nullptr;
    std::optional<QString> rule; // a rule of the employee's own
    std::optional<QString> phone;
    std::optional<QDate> seniorityDate;
    std::optional<int> seniorityNumber;
    QStringList qualifications; // the first is the default one, if there is one
    bool hasDefault = true;
    int overtimePercent = 0; // share of working days with overtime

    QString ruleInForce() const { return rule ? *rule : QString::fromUtf8(shift->rule); }
};

std::vector<DemoPerson> makePeople(const DemoSettings& settings, QRandomGenerator& random);

QString demoDepartment(QRandomGenerator& random);

// The absent codes of answers to overtime offers, in the order of `answerKinds`.
std::span<const char* const> demoAnswerCodes();

// Writes the code tables and the employees with their qualifications.
void loadPeople(Database& database, const std::vector<DemoPerson>& people);

// Writes who works which shift from four weeks before to two weeks after the end of the history.
void loadSchedule(Database& database, const std::vector<DemoPerson>& people,
                  const DemoSettings& settings);

} // namespace tallyroom::host
