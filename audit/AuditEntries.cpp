#include "audit/AuditEntries.h"

#include "common/AnswerKind.h"
#include "common/Format.h"
#include "store/Database.h"
#include "store/Readable.h"
#include "store/Recordset.h"
#include "store/SqlText.h"
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

Line lineOf(const Recordset& entry, const QString& code, const QString& name, bool breakOut) {
    return {stamp(Readable::date(entry.field(QStringLiteral("now")))),
            code,
            name,
            Readable::text(entry.field(QStringLiteral("user"))),
            formatValue(Readable::date(entry.field(QStringLiteral("date"))),
                        QStringLiteral("mm/dd/yyyy")),
            actionText(Readable::number(entry.field(QStringLiteral("action"))),
                       Readable::text(entry.field(QStringLiteral("thistfield"))), breakOut),
            timeText(Readable::number(entry.field(QStringLiteral("ot"))))};
}

// Names by employee code. Most entries are of somebody who was looked up before.
class EmployeeNames {
public:
    explicit EmployeeNames(Recordset& employees) : m_employees(employees) {}

    // Nothing for somebody who is not in the set.
    std::optional<QString> find(const QString& code) {
        const auto known = m_names.constFind(code);
        return known != m_names.constEnd() ? *known : *m_names.insert(code, lookUp(code));
    }

private:
    std::optional<QString> lookUp(const QString& code) {
        m_employees.findFirst(QStringLiteral("[emp_code] = ") + SqlText::criterion(code));
        if (m_employees.noMatch())
            return std::nullopt;
        return Readable::text(m_employees.field(QStringLiteral("emp_name")));
    }

    Recordset& m_employees;
    QHash<QString, std::optional<QString>> m_names;
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
    for (; !rows->eof(); rows->moveNext()) {
        if (const auto name = Readable::key(rows->field(QStringLiteral("user"))))
            names.append(*name);
    }
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
    const Transaction oneState(entries->database(), TransactionKind::Read);
    for (; !entries->eof(); entries->moveNext()) {
        const auto code = Readable::key(entries->field(QStringLiteral("emp_code")));
        if (!code)
            continue;
        if (const auto name = names.find(code->trimmed()))
            take(lineOf(*entries, *code, *name, breakOut));
    }
}

QString actionText(const Variant& action, const QString& historyColumn, bool breakOut) {
    const int code = action.isNull() ? -1 : action.toLong();
    if (code < 0 || code > static_cast<int>(AuditAction::Deleted))
        return {};
    const QString name = actionName(static_cast<AuditAction>(code));
    return breakOut && !historyColumn.isEmpty()
               ? name + QLatin1Char(' ') + rateName(rateOf(historyColumn))
               : name;
}

} // namespace tallyroom::AuditEntries
