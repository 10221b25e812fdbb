// Which employees the user works with, and the lists and conditions made from that.
#pragma once

#include "common/Objects.h"
#include "reports/HostData.h"

#include <vector>

namespace tallyroom::host {

class BucketSelection {
public:
    // Everybody is selected. The employees must outlive the selection.
    explicit BucketSelection(const std::vector<Employee>& employees);

    const std::vector<Employee>& employees() const { return m_employees; }
    const std::vector<bool>& selected() const { return m_selected; } // one for each employee

    // One for each employee, and what the choice is called; "" without a name.
    void setSelected(std::vector<bool> selected, const QString& name);
    const QString& name() const { return m_name; }

    // Selects exactly these; returns the codes that nobody has, and then changes nothing.
    QStringList select(const QStringList& codes);

    // Completes the condition "[Emp_Code] ": "in ('0001','0002')", apostrophes doubled; nobody
    // selected is "in ('')".
    QString employeeFilter() const;

    // Replaces the entries of a late-bound list (Clear, AddItem) by the selected employees, the
    // code in the first nine characters and the name behind it.
    void fill(const ObjectRef& list) const;

private:
    const std::vector<Employee>& m_employees;
    std::vector<bool> m_selected;
    QString m_name;
};

} // namespace tallyroom::host
