#include "audit/AuditEntries.h"

#include "store/Database.h"
#include "store/Recordset.h"
#include "store/Workspace.h"

#include <QHash>
#include <optional>

namespace tallyroom::AuditEntries {

namespace {

QString stamp(const Variant& moment) {
    return formatValue(moment, QStringLiteral("mm/dd/yyyy hh:mm am/pm"));
}

// The time of day that the minutes make: a day or more starts again at zero.
QString timeText(const Variant& minutes) {
    return minutes.isNull()
               ? QString()
               : formatValue(Variant(minutes.toDouble() / 1440), QStringLiteral("hh:mm"));
}

Line lineOf(const Recordset& entry, const Variant& name, bool breakOut) {
    const Variant action = entry.field(QStringLiteral("action"));
    return {stamp(entry.field(QStringLiteral("now"))),
            entry.field(QStringLiteral("emp_code")).textOrEmpty(),
            name.textOrEmpty(),
            entry.field(QStringLiteral("user")).textOrEmpty(),
            formatValue(entry.field(QStringLiteral("date")), QStringLiteral("mm/dd/yyyy")),
            actionText(action.toLong(), entry.field(QStringLiteral("thistfield")), breakOut),
            timeText(entry.field(QStringLiteral("ot")))};
}

// Names by employee code. Most entries are of somebody who was looked up before.
class EmployeeNames {
public:
    explicit EmployeeNames(Recordset& employees) : m_employees(employees) {}

    // Nothing for somebody who is not in the set. The name itself may be Null.
    std::optional<Variant> find(const QString& code) {
        const auto known = m_names.constFind(code);
        return known != m_names.constEnd() ? *known : *m_names.insert(code, lookUp(code));
    }

private:
    std::optional<Variant> lookUp(const QString& code) {
        m_employees.findFirst(QStringLiteral("[emp_code] = '") + code + QLatin1Char('\''));
        if (m_employees.noMatch())
            return std::nullopt;
        return m_employees.field(QStringLiteral("emp_name"));
    }

    Recordset& m_employees;
    QHash<QString, std::optional<Variant>> m_names;
};

} // namespace

QStringList headings() {
    return {QStringLiteral("System Date"), QStringLiteral("Code"),         QStringLiteral("Name"),
            QStringLiteral("User"),        QStringLiteral("Canvass Date"), QStringLiteral("Action"),
            QStringLiteral("Time")};
}

QStringList users(const QString& dataPath) {
    const auto rows = Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select [User] from [tlyr_audit] where [user] <> NULL group by [user];"),
        RecordsetType::Dynaset);
    QStringList names;
    for (; !rows->eof(); rows->moveNext())
        names.append(rows->field(QStringLiteral("user")).toText());
    return names;
}

void read(const QString& dataPath, const QString& employeeFilter, const QString& condition,
          bool breakOut, const std::function<void(const Line&)>& take) {
    const auto employees = Workspace::openHostOptions(dataPath)->openRecordset(
        QStringLiteral("Select [emp_code], [emp_name] from [employee] where ([emp_code] ") +
            employeeFilter + QStringLiteral(");"),
        RecordsetType::Dynaset);
    const auto entries = Workspace::openAddIn(dataPath)->openRecordset(
        QStringLiteral("Select * from [tlyr_audit] where ([emp_code] ") + employeeFilter +
            QStringLiteral(") and ") + condition + QStringLiteral(" order by [now], [emp_code];"),
        RecordsetType::Dynaset);
    EmployeeNames names(*employees);
    const Reading reading(entries->database());
    for (; !entries->eof(); entries->moveNext()) {
        const QString code = entries->field(QStringLiteral("emp_code")).textOrEmpty().trimmed();
        if (const auto name = names.find(code))
            take(lineOf(*entries, *name, breakOut));
    }
}

QString actionText(int action, const Variant& historyColumn, bool breakOut) {
    static const QString names[] = {QStringLiteral("Accepted"), QStringLiteral("Declined"),
                                    QStringLiteral("Deleted")};
    const bool known = action >= 0 && action < static_cast<int>(std::size(names));
    QString name = known ? names[action] : QString();
    if (!breakOut || historyColumn.isNull())
        return name;
    const bool isDouble = historyColumn.toText().endsWith(QLatin1Char('2'));
    return name + (isDouble ? QStringLiteral(" 2.0") : QStringLiteral(" 1.5"));
}

} // namespace tallyroom::AuditEntries
