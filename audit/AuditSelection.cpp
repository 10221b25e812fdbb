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

QString brokenOutClause(const AuditSelection& s) {
    const struct {
        bool chosen;
        const char16_t* term;
    } terms[] = {
        {s.accepted15, u"([action] = 0 and [tHistField] = 'tlyrAccepted')"},
        {s.accepted20, u"([action] = 0 and [tHistField] = 'tlyrAccepted2')"},
        {s.declined15, u"([action] = 1 and [tHistField] = 'tlyrDeclined')"},
        {s.declined20, u"([action] = 1 and [tHistField] = 'tlyrDeclined2')"},
    };
    QStringList chosen;
    for (const auto& term : terms) {
        if (term.chosen)
            chosen.append(QString::fromUtf16(term.term));
    }
    return QLatin1Char('(') + chosen.join(QStringLiteral(" or ")) + QLatin1Char(')');
}

QString plainClause(AuditSelection::Kind kind) {
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
    QStringList kinds;
    for (const auto& [chosen, name] :
         {std::pair(s.accepted15, u"Accepted 1.5"), std::pair(s.accepted20, u"Accepted 2.0"),
          std::pair(s.declined15, u"Declined 1.5"), std::pair(s.declined20, u"Declined 2.0")}) {
        if (chosen)
            kinds.append(QString::fromUtf16(name));
    }
    return kinds.join(QStringLiteral(", "));
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
    return usersClause(users) + (breakOut ? brokenOutClause(*this) : plainClause(kind)) +
           between(QStringLiteral("DateValue([now])"), systemDate) +
           between(QStringLiteral("[date]"), canvassDate);
}

} // namespace tallyroom
