#include "canvass/Offer.h"

#include "canvass/AnswerRecording.h"
#include "common/AnswerLimits.h"
#include "common/DateParser.h"
#include "common/Units.h"

namespace tallyroom {

namespace {

constexpr int namesSaid = 3;

// Why Accept is grey, or would be refused; empty when nothing is wrong. A whole number is the usual
// slip.
QString hindranceOfAmount(const QString& typed, const QString& box) {
    bool isWhole = false;
    const int whole = typed.trimmed().toInt(&isWhole);
    const int hours = isWhole && whole >= 0 && whole <= 24 ? whole : 8;
    const QString examples = QStringLiteral(": %1:00 or %1.0").arg(hours);
    if (typed.trimmed().isEmpty())
        return box + QStringLiteral(" is empty") + examples;
    if (!IsTime(typed))
        return typed + QStringLiteral(" is not a time") + examples;
    if (!AnswerRecording::isValidAmount(typed))
        return typed + QStringLiteral(" is not within a day: 0:00 to 24:00");
    return {};
}

QString doubtAbout(const QStringList& amounts) {
    int sum = 0;
    QString doubt;
    for (const QString& amount : amounts) {
        const int minutes = TimeConversion::toMinutes(amount);
        sum += minutes;
        if (minutes > 0 && doubt.isEmpty()) // one of two rates may have none
            doubt = AnswerLimits::doubtAboutMinutes(minutes);
    }
    return doubt.isEmpty() ? AnswerLimits::doubtAboutMinutes(sum) : doubt;
}

QStringList hindrancesOfAmounts(const Offer& offer) {
    QStringList said{hindranceOfAmount(offer.amount, offer.breakOut ? rateName(Rate::OneAndAHalf)
                                                                    : QStringLiteral("Overtime"))};
    if (offer.breakOut)
        said.append(hindranceOfAmount(offer.doubleAmount, rateName(Rate::Double)));
    said.removeAll(QString());
    return said;
}

QString hindranceOfDay(const QString& typed) {
    if (typed.trimmed().isEmpty())
        return QStringLiteral("Date is empty");
    return Dates::isDate(typed) ? QString() : typed + QStringLiteral(" is not a date");
}

QStringList aboutAmounts(const Offer& offer) {
    QStringList typed{offer.amount};
    if (offer.breakOut)
        typed.append(offer.doubleAmount);
    const QStringList hindrances = hindrancesOfAmounts(offer);
    return hindrances.isEmpty() ? QStringList{Said::amounts(typed), doubtAbout(typed)} : hindrances;
}

QStringList aboutDay(const Offer& offer) {
    const auto date = Dates::parse(offer.canvassDate);
    if (!date)
        return {hindranceOfDay(offer.canvassDate)};
    const bool counts = !offer.period || offer.period->contains(*date);
    return {Said::day(*date), AnswerLimits::doubtAboutDay(*date, offer.today),
            counts ? QString()
                   : QStringLiteral("outside the totalling period: these figures will not change")};
}

QString who(const Offer& offer) {
    QString text = QStringLiteral("%1 selected").arg(offer.names.size());
    const auto date = Dates::parse(offer.canvassDate);
    if (offer.answered > 0 && date)
        text += QStringLiteral(", %1 already answered for %2")
                    .arg(offer.answered)
                    .arg(Said::dayWithoutYear(*date, offer.today));
    return offer.names.size() == 1 ? text + QStringLiteral(": ") + offer.names.front() : text;
}

// Several names come last: where room is short they are what is missed least.
QString firstNames(const Offer& offer) {
    if (offer.names.size() == 1)
        return {};
    const QString names = offer.names.mid(0, namesSaid).join(QStringLiteral("; "));
    return offer.names.size() > namesSaid ? names + QStringLiteral("; \u2026") : names;
}

} // namespace

QString Offer::text() const {
    if (names.isEmpty())
        return {};
    QStringList said{who(*this)};
    said += aboutAmounts(*this) + aboutDay(*this);
    said.append(firstNames(*this));
    said.removeAll(QString());
    return said.join(Said::gap);
}

QString Offer::hindrance() const {
    if (names.isEmpty())
        return QStringLiteral("nobody is selected");
    QStringList said = hindrancesOfAmounts(*this);
    said.append(hindranceOfDay(canvassDate));
    said.removeAll(QString());
    return said.join(Said::gap);
}

QString Said::day(Date day) {
    return Dates::format(day, QStringLiteral("ddd m/d/yyyy"));
}

QString Said::dayWithoutYear(Date day, Date today) {
    return Dates::dayOf(day).year() == Dates::dayOf(today).year()
               ? Dates::format(day, QStringLiteral("ddd m/d"))
               : Said::day(day);
}

QString Said::amount(const QString& typed) {
    return AnswerRecording::isValidAmount(typed)
               ? TimeConversion::toShortText(TimeConversion::toMinutes(typed))
               : typed;
}

QString Said::amounts(const QStringList& typed) {
    QStringList said;
    for (const QString& amount : typed)
        said.append(Said::amount(amount));
    return said.join(QStringLiteral(" + "));
}

} // namespace tallyroom
