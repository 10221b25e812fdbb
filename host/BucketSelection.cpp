#include "host/BucketSelection.h"

#include "common/CoreFunctions.h"
#include "store/SqlText.h"

#include <QSet>
#include <algorithm>

namespace tallyroom::host {

BucketSelection::BucketSelection(const std::vector<Employee>& employees)
    : m_employees(employees), m_selected(employees.size(), true) {}

void BucketSelection::setSelected(std::vector<bool> selected, const QString& name) {
    m_selected = std::move(selected);
    m_name = name;
}

QStringList BucketSelection::select(const QStringList& codes) {
    QSet<QString> wanted(codes.begin(), codes.end());
    std::vector<bool> selected;
    for (const Employee& employee : m_employees)
        selected.push_back(wanted.remove(employee.code));
    QStringList unknown = wanted.values();
    unknown.sort();
    if (unknown.isEmpty())
        setSelected(std::move(selected), {});
    return unknown;
}

QString BucketSelection::employeeFilter() const {
    QStringList codes;
    for (std::size_t at = 0; at < m_employees.size(); ++at) {
        if (m_selected[at])
            codes << SqlText::escaped(m_employees[at].code);
    }
    return QStringLiteral("in ('") + codes.join(QStringLiteral("','")) + QStringLiteral("')");
}

void BucketSelection::fill(const ObjectRef& list) const {
    list.call(QStringLiteral("Clear"));
    for (std::size_t at = 0; at < m_employees.size(); ++at) {
        const Employee& employee = m_employees[at];
        if (m_selected[at])
            list.call(QStringLiteral("AddItem"),
                      {Variant(CoreFunctions::listEntry(employee.code, employee.name))});
    }
}

} // namespace tallyroom::host
