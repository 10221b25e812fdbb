#include "audit/Contacts.h"
#include "audit/Moments.h"
#include "common/RunError.h"
#include "reports/CheckFamilies.h"
#include "reports/StandingReading.h"
#include "store/Readable.h"

#include <algorithm>
#include <map>

namespace tallyroom {

namespace {

// An answer of a command, with its place on the board.
struct Placed {
    Date now;
    QString code;
    Date date; // of the overtime
    AuditAction action;
    int place;
};

// The answers of each command, deleted ones among them: their people were asked.
using Commands = QHash<QString, std::vector<Placed>>;

Commands readCommands(Database& addIn, const Period& recorded) {
    const auto rows = addIn.openRecordset(
        QStringLiteral("Select [Command], [Now], [Emp_Code], [Date], [Action], [Place] from "
                       "[TLYR_Standing] where ([Emp_Code] <> NULL) and ") +
            Moments::within(QStringLiteral("Now"), recorded.from, recorded.to) +
            QStringLiteral(" order by [Now], [Place];"),
        RecordsetType::Snapshot);
    Commands commands;
    for (; !rows->eof(); rows->moveNext()) {
        const Variant now = Readable::date(rows->field(1));
        const auto code = Readable::key(rows->field(2));
        const Variant date = Readable::date(rows->field(3));
        const Variant action = Readable::number(rows->field(4));
        const Variant place = Readable::number(rows->field(5));
        if (!now.isNull() && code && !date.isNull() && !action.isNull() && !place.isNull())
            commands[Readable::text(rows->field(0))].push_back(
                {now.toDate(), *code, date.toDate(), static_cast<AuditAction>(action.toLong()),
                 place.toLong()});
    }
    return commands;
}

class TurnCheck {
public:
    TurnCheck(const CheckedData& data, Database& addIn) : m_data(data), m_addIn(addIn) {
        for (const CheckedEntry& entry : data.entries)
            note(entry.personDay(), entry.now);
        for (const Contacts::Contact& contact :
             Contacts::read(addIn, data.offered.from, data.offered.to))
            note(personDay(contact.code, Dates::dayOf(contact.date)), contact.now);
    }

    Check run(const ReportProgress& progress) {
        const Commands commands = readCommands(m_addIn, m_data.recorded);
        int done = 0;
        for (auto command = commands.cbegin(); command != commands.cend(); ++command) {
            requireNotCancelled(progress, done++, static_cast<int>(commands.size()));
            check(command.key(), *command);
        }
        for (auto& [day, finding] : m_byDay)
            m_check.findings.push_back(std::move(finding));
        return std::move(m_check);
    }

    qsizetype kept() const { return m_kept; } // answers that a standing tells of

private:
    static bool isAnswer(const Placed& placed) { return placed.action != AuditAction::Deleted; }

    // When each was asked first.
    void note(const PersonDay& person, Date moment) {
        const auto known = m_asked.find(person);
        if (known == m_asked.end())
            m_asked.insert(person, moment);
        else
            *known = std::min(*known, moment);
    }

    // One line a command, for the lowest of its answers. Who is absent that day cannot be asked.
    void check(const QString& command, const std::vector<Placed>& answers) {
        const auto lowest = std::ranges::max_element(
            answers, {}, [](const Placed& each) { return isAnswer(each) ? each.place : 0; });
        if (!isAnswer(*lowest))
            return;
        const auto board = snapshotOf(m_addIn, command);
        if (!board)
            return;
        m_kept += std::ranges::count_if(answers, &isAnswer);
        const QStringList passed = passedOver(*board, answers, *lowest);
        if (passed.isEmpty())
            return;
        const QString order =
            board->ordering.isEmpty() ? QStringLiteral("no ordering") : board->ordering;
        m_byDay.emplace(
            lowest->date,
            Finding{lowest->date, lowest->code,
                    QStringLiteral("Place %1 of %2 (%3), before %4")
                        .arg(lowest->place)
                        .arg(board->listed)
                        .arg(order, listed(passed)),
                    QStringLiteral("Ask those above, or note why they were not asked.")});
    }

    QStringList passedOver(const Standing::Snapshot& board, const std::vector<Placed>& answers,
                           const Placed& lowest) const {
        const QDate day = Dates::dayOf(lowest.date);
        const Date last = std::ranges::max(answers, {}, &Placed::now).now;
        QStringList passed;
        const auto above =
            std::min(board.rows.size(), static_cast<std::size_t>(std::max(1, lowest.place)) - 1);
        for (std::size_t at = 0; at < above; ++at) {
            const Standing::Listed& row = board.rows[at];
            const PersonDay person = personDay(row.code, day);
            const auto asked = m_asked.constFind(person);
            const bool wasAsked = row.wasAsked || (asked != m_asked.constEnd() && *asked <= last);
            if (!wasAsked && !m_data.absences.contains(person))
                passed << m_data.described(row.code);
        }
        return passed;
    }

    const CheckedData& m_data;
    Database& m_addIn;
    QHash<PersonDay, Date> m_asked;
    Check m_check{QStringLiteral("Asked before somebody above who had neither answer nor contact"),
                  {}};
    std::multimap<Date, Finding> m_byDay; // of the check, by the day of the overtime
    qsizetype m_kept = 0;
};

qsizetype answersInRange(const CheckedData& data) {
    return std::ranges::count_if(data.entries, [](const CheckedEntry& entry) {
        return entry.isInRange && entry.isAnswer();
    });
}

} // namespace

void checkTurns(const CheckedData& data, Database& addIn, Findings& findings,
                const ReportProgress& progress) {
    const qsizetype answers = answersInRange(data);
    try {
        TurnCheck turns(data, addIn);
        Check check = turns.run(progress);
        if (turns.kept() > 0 || answers == 0)
            findings.checks.push_back(std::move(check));
        if (turns.kept() < answers)
            findings.notes << QStringLiteral(
                                  "Whether somebody was passed over cannot be checked for %1 of %2 "
                                  "answers: where people stood was not kept with them.")
                                  .arg(answers - turns.kept())
                                  .arg(answers);
    } catch (const RunError& error) {
        if (!Standing::isMissing(error.number()))
            throw;
        findings.notes << QStringLiteral("Whether somebody was passed over cannot be checked: "
                                         "these data have no place to keep where people stood.");
    }
}

} // namespace tallyroom
