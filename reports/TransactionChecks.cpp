#include "common/Units.h"
#include "reports/AuditReading.h"
#include "reports/CheckFamilies.h"

#include <algorithm>

namespace tallyroom {

namespace {

// An entry without a column does not say at which rate it was.
bool isOfKind(const CheckedEntry& entry, const AnswerKind& kind) {
    return entry.action == kind.action &&
           (entry.historyColumn.isEmpty() ||
            entry.historyColumn.compare(QStringView(kind.history), Qt::CaseInsensitive) == 0);
}

// The transactions of which no entry has been found yet, by employee and day.
class Transactions {
public:
    explicit Transactions(const CheckedData& data) {
        for (const HistoryAnswer& transaction : data.transactions)
            m_left[personDay(transaction.code, transaction.day)].push_back(&transaction);
    }

    // Takes one of the entry's kind out; nothing when there is none.
    const HistoryAnswer* take(const CheckedEntry& entry, bool sameMinutes) {
        const auto place = m_left.find(entry.personDay());
        if (place == m_left.end())
            return nullptr;
        const auto found = std::ranges::find_if(*place, [&](const HistoryAnswer* each) {
            return isOfKind(entry, *each->kind) && (!sameMinutes || each->minutes == entry.minutes);
        });
        if (found == place->end())
            return nullptr;
        const HistoryAnswer* taken = *found;
        place->erase(found);
        return taken;
    }

    bool isLeft(const HistoryAnswer& transaction) const {
        const auto place = m_left.constFind(personDay(transaction.code, transaction.day));
        return place != m_left.constEnd() && std::ranges::count(*place, &transaction) > 0;
    }

private:
    QHash<PersonDay, std::vector<const HistoryAnswer*>> m_left;
};

std::vector<const CheckedEntry*> withoutTransaction(const CheckedData& data,
                                                    Transactions& transactions) {
    std::vector<const CheckedEntry*> left;
    for (const CheckedEntry& entry : data.entries) {
        if (entry.isAnswer() && !transactions.take(entry, true))
            left.push_back(&entry);
    }
    return left;
}

Check unmatchedEntries(const std::vector<const CheckedEntry*>& entries,
                       Transactions& transactions) {
    Check check{QStringLiteral("Answers in the audit that the history does not hold"), {}};
    for (const CheckedEntry* entry : entries) {
        const HistoryAnswer* other = transactions.take(*entry, false);
        if (!entry->isInRange)
            continue;
        const QString difference = other ? QStringLiteral(": in the history %1")
                                               .arg(TimeConversion::toShortText(other->minutes))
                                         : QString();
        check.findings.push_back(
            {entry->date, entry->code, entryText(*entry) + difference,
             QStringLiteral("No board counts it so: delete it and record it anew.")});
    }
    return check;
}

// Older ones may be of answers of which no day in range tells.
Check unmatchedTransactions(const CheckedData& data, const Transactions& transactions) {
    Check check{QStringLiteral("Answers in the history that the audit does not hold"), {}};
    for (const HistoryAnswer& transaction : data.transactions) {
        if (transaction.minutes == 0 || transaction.day < data.recorded.from ||
            !transactions.isLeft(transaction))
            continue;
        check.findings.push_back(
            {Dates::fromQDate(transaction.day), transaction.code,
             QStringLiteral("%1 %2 at %3, recorded by nobody knows whom")
                 .arg(actionName(transaction.kind->action),
                      TimeConversion::toShortText(transaction.minutes),
                      rateName(transaction.kind->rate)),
             QStringLiteral("Delete the transaction and record the answer anew.")});
    }
    return check;
}

} // namespace

void checkTransactions(const CheckedData& data, Findings& findings) {
    Transactions transactions(data);
    const auto entries = withoutTransaction(data, transactions);
    findings.checks.push_back(unmatchedEntries(entries, transactions));
    findings.checks.push_back(unmatchedTransactions(data, transactions));
}

} // namespace tallyroom
