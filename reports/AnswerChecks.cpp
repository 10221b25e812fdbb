#include "common/AnswerLimits.h"
#include "reports/AuditReading.h"
#include "reports/CheckFamilies.h"

#include <QMap>

namespace tallyroom {

namespace {

constexpr double minute = 1.0 / 1440;

// Where rates are told apart, one answer leaves an entry for each.
bool isSameAnswer(const CheckedEntry& left, const CheckedEntry& right) {
    return left.action == right.action && left.user == right.user &&
           rateOf(left.historyColumn) != rateOf(right.historyColumn) &&
           right.now.serial - left.now.serial < minute;
}

using Answers = std::vector<const CheckedEntry*>;

int countOf(const Answers& entries) {
    int count = 0;
    for (std::size_t at = 0; at < entries.size(); ++at, ++count) {
        if (at + 1 < entries.size() && isSameAnswer(*entries[at], *entries[at + 1]))
            ++at;
    }
    return count;
}

QString textOf(const Answers& entries) {
    QStringList texts;
    for (const CheckedEntry* entry : entries)
        texts << entryText(*entry);
    return texts.join(QStringLiteral("; "));
}

Check severalAnswers(const CheckedData& data) {
    Check check{QStringLiteral("Several answers of one person for one date"), {}};
    QMap<std::pair<QDate, QString>, Answers> byDay;
    for (const CheckedEntry& entry : data.entries) {
        if (entry.isAnswer())
            byDay[{entry.day(), entry.personDay().first}].push_back(&entry);
    }
    for (const Answers& entries : std::as_const(byDay)) {
        const bool isInRange = std::ranges::any_of(entries, &CheckedEntry::isInRange);
        if (isInRange && countOf(entries) > 1)
            check.findings.push_back({entries.front()->date, entries.front()->code, textOf(entries),
                                      QStringLiteral("In the audit, delete what does not count.")});
    }
    return check;
}

// Calls back with each answer of the range.
template<class Take>
void forAnswers(const CheckedData& data, const Take& take) {
    for (const CheckedEntry& entry : data.entries) {
        if (entry.isInRange && entry.isAnswer())
            take(entry);
    }
}

// An answer that was recorded before the period began, for a day before it, lay in another one.
bool isOfEarlierPeriod(const CheckedEntry& entry, const TotallingPeriod& period) {
    const Date first = std::min(period.from, period.to);
    return entry.date < first && entry.now < first;
}

Check outsidePeriod(const CheckedData& data, Findings& findings) {
    Check check{QStringLiteral("Answers for dates outside the totalling period"), {}};
    if (!data.period)
        return check;
    int earlier = 0;
    forAnswers(data, [&](const CheckedEntry& entry) {
        if (data.period->contains(Dates::fromQDate(entry.day())))
            return;
        if (isOfEarlierPeriod(entry, *data.period))
            ++earlier;
        else
            check.findings.push_back(
                {entry.date, entry.code, entryText(entry),
                 QStringLiteral("No board counts it: correct its date or the period.")});
    });
    if (earlier > 0)
        findings.notes << QStringLiteral(
                              "Answers of an earlier totalling period, which are not held against "
                              "this one: %1.")
                              .arg(earlier);
    return check;
}

Check unusual(const CheckedData& data) {
    Check check{QStringLiteral("Unusual amounts and dates"), {}};
    forAnswers(data, [&](const CheckedEntry& entry) {
        const QString minutes = AnswerLimits::doubtAboutMinutes(entry.minutes);
        const QString day = AnswerLimits::doubtAboutDay(entry.date, entry.now);
        for (const QString& doubt : {minutes, day}) {
            if (!doubt.isEmpty())
                check.findings.push_back(
                    {entry.date, entry.code, entryText(entry) + QStringLiteral(": ") + doubt,
                     QStringLiteral("If it is a slip, delete it and record it anew.")});
        }
    });
    return check;
}

Check onAbsence(const CheckedData& data) {
    Check check{QStringLiteral("Answers for a day of absence"), {}};
    forAnswers(data, [&](const CheckedEntry& entry) {
        if (data.absences.contains(entry.personDay()))
            check.findings.push_back(
                {entry.date, entry.code, entryText(entry),
                 QStringLiteral("Correct the absence, or delete the answer.")});
    });
    return check;
}

} // namespace

void checkAnswers(const CheckedData& data, Findings& findings) {
    findings.checks.push_back(severalAnswers(data));
    findings.checks.push_back(outsidePeriod(data, findings));
    findings.checks.push_back(unusual(data));
    findings.checks.push_back(onAbsence(data));
}

} // namespace tallyroom
