#include "canvass/BoardStatus.h"

#include "common/Counted.h"

#include <QStringList>

namespace tallyroom {

namespace {

const QString gap = QStringLiteral("  \u00b7  ");

QString joined(QStringList notes) {
    notes.removeAll(QString());
    return notes.join(gap);
}

QString answers(int count) {
    return count == 1 ? QStringLiteral("1 answer") : QStringLiteral("%1 answers").arg(count);
}

QString textOf(const AnswersElsewhere& elsewhere) {
    QStringList parts;
    if (elsewhere.recorded > 0)
        parts << answers(elsewhere.recorded) + QStringLiteral(" recorded");
    if (elsewhere.takenBack > 0)
        parts << answers(elsewhere.takenBack) + QStringLiteral(" taken back");
    return parts.isEmpty()
               ? QString()
               : parts.join(QStringLiteral(", ")) + QStringLiteral(" at other desks: Refresh");
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
    return joined({news, textOf(elsewhere), connection, user, asked, period, employees, orderings});
}

QString BoardFigures::text() const {
    return joined(
        {periodText(period),
         ordering.isEmpty() ? QStringLiteral("No order") : QStringLiteral("Order: ") + ordering,
         counted(employees, u"employee", u"employees"), bucket, user});
}

} // namespace tallyroom
