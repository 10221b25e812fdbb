#include "canvass/AnswerNews.h"

#include "common/DateParser.h"

namespace tallyroom::AnswerNews {

namespace {

QString recorded(const AnswerRequest& request, const AnswerRecording::Result& result,
                 const QStringList& names, Date today) {
    if (result.recorded == 0)
        return Said::nothingRecorded;
    const auto day = Dates::parse(request.canvassDate);
    return QStringLiteral("%1 %2 for %3 on %4")
        .arg(actionName(request.accept ? AuditAction::Accepted : AuditAction::Declined),
             Said::amounts(result.amounts),
             names.size() == 1 ? names.front() : QString::number(result.recorded),
             day ? Said::dayWithoutYear(*day, today) : request.canvassDate);
}

QString passedOver(int employees, const QString& reason) {
    return employees == 0 ? QString()
                          : QStringLiteral("%1 passed over: %2").arg(employees).arg(reason);
}

// The kinds are named as the windows that set them up name them.
QStringList notSetUp(const AnswerRequest& request, const AnswerRecording::Result& result) {
    QStringList texts;
    for (const AnswerKind* kind : result.notSetUp)
        texts.append(QStringLiteral("the absent code for %1 is not set up")
                         .arg(actionName(kind->action).toLower() +
                              (request.breakOut ? QLatin1Char(' ') + rateName(kind->rate)
                                                : QStringLiteral(" overtime"))));
    return texts;
}

QString notKept(const std::optional<RunError>& failure) {
    if (!failure)
        return {};
    return Standing::isMissing(failure->number())
               ? QStringLiteral("no standing is kept: this data needs brightclock --upgrade")
               : QStringLiteral("where they stood was not kept");
}

} // namespace

QString text(const AnswerRequest& request, const AnswerRecording::Result& result,
             const QStringList& names, Date today) {
    if (result.employees == 0)
        return refusal(Offer{});
    QStringList news{recorded(request, result, names, today)};
    news += notSetUp(request, result);
    news.append(passedOver(result.withoutRule, QStringLiteral("shift without a rule")));
    news.append(passedOver(result.unlisted, QStringLiteral("no longer on the list: Refresh")));
    news.append(notKept(result.standing));
    news.removeAll(QString());
    return news.join(QStringLiteral("; "));
}

QString refusal(const Offer& offer) {
    return Said::nothingRecorded + QStringLiteral(": ") + offer.hindrance();
}

QString progress(int done, int of) {
    return QStringLiteral("Recording %1 of %2").arg(done).arg(of);
}

} // namespace tallyroom::AnswerNews
