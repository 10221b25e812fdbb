#include "common/AnswerLimits.h"

#include "common/Units.h"

namespace tallyroom::AnswerLimits {

QString doubtAboutMinutes(int minutes) {
    using TimeConversion::toShortText;
    if (minutes > longest)
        return QStringLiteral("more than ") + toShortText(longest);
    return minutes < shortest ? QStringLiteral("less than ") + toShortText(shortest) : QString();
}

// A time alone reads as a date, too: as a moment of the day from which dates count.
QString doubtAboutDay(Date day, Date today) {
    if (day >= Date{0} && day < Date{1})
        return QStringLiteral("a time without a date");
    const qint64 ahead = Dates::dayOf(today).daysTo(Dates::dayOf(day));
    if (ahead > farthest)
        return QStringLiteral("%1 days ahead").arg(ahead);
    return ahead < -farthest ? QStringLiteral("%1 days ago").arg(-ahead) : QString();
}

} // namespace tallyroom::AnswerLimits
