#include "common/AnswerKind.h"

namespace tallyroom {

QString actionName(AuditAction action) {
    static const QString names[] = {QStringLiteral("Accepted"), QStringLiteral("Declined"),
                                    QStringLiteral("Deleted")};
    return names[static_cast<int>(action)];
}

QString rateName(Rate rate) {
    return rate == Rate::Double ? QStringLiteral("2.0") : QStringLiteral("1.5");
}

Rate rateOf(const QString& historyColumn) {
    return historyColumn.endsWith(QLatin1Char('2')) ? Rate::Double : Rate::OneAndAHalf;
}

} // namespace tallyroom
