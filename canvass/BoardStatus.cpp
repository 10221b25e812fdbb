#include "canvass/BoardStatus.h"

#include <QStringList>

namespace tallyroom {

namespace {

const QString gap = QStringLiteral("  \u00b7  ");

QString joined(QStringList notes) {
    notes.removeAll(QString());
    return notes.join(gap);
}

QString periodText(const std::optional<TotallingPeriod>& period) {
    const auto shown = [](Date day) { return Dates::format(day, QStringLiteral("m/d/yyyy")); };
    return period ? QStringLiteral("Totals %1 to %2").arg(shown(period->from), shown(period->to))
                  : QStringLiteral("Totals of all dates");
}

} // namespace

QString BoardStatus::text(const QString& offer) const {
    QString news = offer.isEmpty() ? command : offer;
    if (stale)
        news += news.isEmpty() ? QStringLiteral("The figures are not current: Refresh")
                               : QStringLiteral("; the figures are not current: Refresh");
    return joined({news, user, asked, period, employees, orderings});
}

QString BoardFigures::text() const {
    return joined(
        {periodText(period),
         ordering.isEmpty() ? QStringLiteral("No order") : QStringLiteral("Order: ") + ordering,
         employees == 1 ? QStringLiteral("1 employee")
                        : QStringLiteral("%1 employees").arg(employees),
         bucket, user});
}

} // namespace tallyroom
