#include "canvass/BoardStatus.h"

#include <QStringList>

namespace tallyroom {

QString BoardStatus::text() const {
    QString news = command;
    if (stale)
        news += news.isEmpty() ? QStringLiteral("The figures are not current: Refresh")
                               : QStringLiteral("; the figures are not current: Refresh");
    QStringList notes{news, user, period, employees, orderings};
    notes.removeAll(QString());
    return notes.join(QStringLiteral("  \u00b7  "));
}

} // namespace tallyroom
