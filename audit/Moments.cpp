#include "audit/Moments.h"

#include "store/SqlText.h"

namespace tallyroom::Moments {

QString within(const QString& column, QDate from, QDate to) {
    constexpr double second = 1.0 / 86400;
    const Date last{Dates::fromQDate(to).serial + 1 - second};
    return QStringLiteral("([%1] between ").arg(column) + SqlText::literal(Dates::fromQDate(from)) +
           QStringLiteral(" and ") + SqlText::literal(last) + QLatin1Char(')');
}

QString text(Date date) {
    const QDateTime moment = Dates::toQDateTime(date);
    const QDate day = moment.date();
    const QString minute = QString::number(moment.time().minute());
    return QString::number(day.month()) + QLatin1Char('/') + QString::number(day.day()) +
           QLatin1Char('/') + QString::number(day.year()) + QLatin1Char(' ') +
           QString::number(moment.time().hour()) +
           (minute.size() == 1 ? QStringLiteral(":0") : QStringLiteral(":")) + minute;
}

} // namespace tallyroom::Moments
