#include "audit/AuditSelection.h"

#include "store/SqlText.h"

namespace tallyroom {

namespace {

QString usersClause(const QStringList& users) {
    QStringList quoted;
    for (const QString& user : users)
        quoted.append(SqlText::literal(user));
    return QStringLiteral("([User] in (") + quoted.join(QStringLiteral(", ")) +
           QStringLiteral(")) and ");
}

QString brokenOutClause(const AuditSelection& selection) {
    QStringList terms;
    for (const AnswerKind* kind : selection.answers)
        terms.append(QStringLiteral("([action] = %1 and [tHistField] = '%2')")
                         .arg(static_cast<int>(kind->action))
                         .arg(QString::fromUtf16(kind->history)));
    return QLatin1Char('(') + terms.join(QStringLiteral(" or ")) + QLatin1Char(')');
}

QString joinedClause(AuditSelection::Kind kind) {
    switch (kind) {
    case AuditSelection::Kind::Declined:
        return QStringLiteral(" ([Action] = 1 or [Action] = 2)");
    case AuditSelection::Kind::Accepted:
        return QStringLiteral(" ([Action] = 0  or [Action] = 2)");
    default:
        return QStringLiteral(" ([Action] = 0 or [Action] = 1  or [Action] = 2)");
    }
}

QString between(const QString& expression, const std::optional<AuditSelection::Range>& range) {
    if (!range)
        return {};
    return QStringLiteral(" and (") + expression + QStringLiteral(" between #") + range->from +
           QStringLiteral("# and #") + range->to + QStringLiteral("#)");
}

QString kindsInWords(const AuditSelection& s) {
    if (!s.breakOut)
        return s.kind == AuditSelection::Kind::Both ? QStringLiteral("Accepted, Declined, Deleted")
               : s.kind == AuditSelection::Kind::Accepted ? QStringLiteral("Accepted, Deleted")
                                                          : QStringLiteral("Declined, Deleted");
    QStringList names;
    for (const AnswerKind* kind : s.answers)
        names.append(actionName(kind->action) + QLatin1Char(' ') + rateName(kind->rate));
    return names.join(QStringLiteral(", "));
}

QString rangeInWords(const QString& name, const std::optional<AuditSelection::Range>& range) {
    return name + QStringLiteral(": ") +
           (range ? range->from + QStringLiteral(" to ") + range->to : QStringLiteral("all"));
}

} // namespace

QStringList AuditSelection::description() const {
    return {QStringLiteral("Users: ") + users.join(QStringLiteral(", ")),
            QStringLiteral("Employees selected: ") + QString::number(employees),
            QStringLiteral("Actions: ") + kindsInWords(*this),
            rangeInWords(QStringLiteral("System Date"), systemDate),
            rangeInWords(QStringLiteral("Canvass Date"), canvassDate)};
}

// The day of recording is compared without its time of day, the canvass date as it is stored.
QString AuditSelection::clause() const {
    return usersClause(users) + (breakOut ? brokenOutClause(*this) : joinedClause(kind)) +
           between(QStringLiteral("DateValue([now])"), systemDate) +
           between(QStringLiteral("[date]"), canvassDate);
}

} // namespace tallyroom
