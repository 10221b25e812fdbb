#include "host/GroupChoices.h"

#include <QComboBox>
#include <QMap>
#include <set>

namespace tallyroom::host {

void fillGroupChoices(const HostData& data, QComboBox& department, QComboBox& shift,
                      QComboBox& qualification) {
    std::set<std::pair<QString, QString>> departments; // names, which may be alike, and codes
    QMap<QString, QString> qualifications;
    for (const Employee& employee : data.employees) {
        if (!employee.department.isEmpty()) // an empty code stands for all
            departments.emplace(data.departmentName(employee.department), employee.department);
        for (const QString& code : employee.qualifications)
            qualifications.insert(code, code);
    }
    for (auto* box : {&department, &shift, &qualification})
        box->addItem(QStringLiteral("All"), QString());
    for (const auto& [name, code] : departments)
        department.addItem(name, code);
    for (const Shift& each : data.shifts)
        shift.addItem(each.code + QStringLiteral("  ") + each.description, each.code);
    for (const QString& code : qualifications)
        qualification.addItem(code, code);
}

} // namespace tallyroom::host
