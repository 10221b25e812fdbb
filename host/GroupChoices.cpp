#include "host/GroupChoices.h"

#include <QComboBox>
#include <QMap>

namespace tallyroom::host {

void fillGroupChoices(const HostData& data, QComboBox& department, QComboBox& shift,
                      QComboBox& qualification) {
    QMap<QString, QString> departments;
    QMap<QString, QString> qualifications;
    for (const Employee& employee : data.employees) {
        if (!employee.department.isEmpty()) // an empty code stands for all
            departments.insert(data.departmentName(employee.department), employee.department);
        for (const QString& code : employee.qualifications)
            qualifications.insert(code, code);
    }
    for (auto* box : {&department, &shift, &qualification})
        box->addItem(QStringLiteral("All"), QString());
    for (auto entry = departments.cbegin(); entry != departments.cend(); ++entry)
        department.addItem(entry.key(), entry.value());
    for (const Shift& each : data.shifts)
        shift.addItem(each.code + QStringLiteral("  ") + each.description, each.code);
    for (const QString& code : qualifications)
        qualification.addItem(code, code);
}

} // namespace tallyroom::host
