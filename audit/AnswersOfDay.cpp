#include "audit/AnswersOfDay.h"

#include "common/AnswerKind.h"
#include "common/RunError.h"
#include "common/TextOrder.h"
#include "common/Units.h"
#include "store/Readable.h"
#include "store/Recordset.h"
#include "store/SqlText.h"
#include "store/Workspace.h"

#include <map>
#include <utility>

namespace tallyroom {

namespace {

// The board's codes and the audit's: those may have blanks at their ends.
QString keyOf(const QString& code) {
    return TextOrder::folded(code.trimmed());
}

// The day with its times: a date that was typed with a time of day is stored with it. Without an
// order, which would have the engine walk an index.
QString statement(Date day) {
    const double first = Dates::fromQDate(Dates::dayOf(day)).serial;
    constexpr double second = 1.0 / 86400;
    return QStringLiteral("Select [Emp_Code], [Now], [User], [Action], [OT], [tHistField] from "
                          "[TLYR_Audit] where ([Date] between ") +
           SqlText::literal(Date{first}) + QStringLiteral(" and ") +
           SqlText::literal(Date{first + 1 - second}) +
           QStringLiteral(") and ([Action] = 0 or [Action] = 1);");
}

enum Column { EmpCode, Now, User, Action, OT, HistField }; // of the statement

// ", 11/21/2026 9:12", without the pictures that take many times as long.
QString momentText(Date date) {
    const QDateTime moment = Dates::toQDateTime(date);
    const QDate day = moment.date();
    const QString minute = QString::number(moment.time().minute());
    return QStringLiteral(", ") + QString::number(day.month()) + QLatin1Char('/') +
           QString::number(day.day()) + QLatin1Char('/') + QString::number(day.year()) +
           QLatin1Char(' ') + QString::number(moment.time().hour()) +
           (minute.size() == 1 ? QStringLiteral(":0") : QStringLiteral(":")) + minute;
}

// The texts of one entry after the other.
class EntryTexts {
public:
    // Nothing when any of its cells cannot be read.
    std::optional<QString> of(const Recordset& entry, const Variant& moment) {
        const Variant action = Readable::number(entry.field(Action));
        const Variant minutes = Readable::number(entry.field(OT));
        const auto user = Readable::key(entry.field(User));
        const auto column = Readable::key(entry.field(HistField));
        if (action.isNull() || minutes.isNull() || moment.isNull() || !user || !column)
            return std::nullopt;
        return actionName(static_cast<AuditAction>(action.toLong())) + QLatin1Char(' ') +
               amount(minutes.toLong(), rateOf(*column)) + momentText(moment.toDate()) +
               QStringLiteral(" by ") + *user;
    }

private:
    // Of amounts a day has few different ones.
    QString amount(std::int32_t minutes, Rate rate) {
        const auto [known, isNew] = m_amounts.try_emplace({minutes, rate});
        if (isNew)
            known->second =
                TimeConversion::toShortText(minutes) +
                (rate == Rate::Double ? QStringLiteral(" at ") + rateName(rate) : QString());
        return known->second;
    }

    std::map<std::pair<std::int32_t, Rate>, QString> m_amounts;
};

} // namespace

bool AnswersOfDay::read(const QString& dataPath, Date day) {
    if (m_day != day)
        clear();
    m_day = day;
    try {
        const auto entries = Workspace::openAddIn(dataPath, WhenInUse::Fail)
                                 ->openRecordset(statement(day), RecordsetType::Snapshot);
        EntryTexts texts;
        std::multimap<Date, std::pair<QString, QString>> byTime;
        for (; !entries->eof(); entries->moveNext()) {
            const auto code = Readable::key(entries->field(EmpCode));
            const Variant moment = Readable::date(entries->field(Now));
            const auto text = texts.of(*entries, moment);
            if (code && text)
                byTime.emplace(moment.toDate(), std::pair(keyOf(*code), *text));
        }
        m_notes.clear();
        for (const auto& [moment, answer] : byTime) {
            QString& note = m_notes[answer.first];
            note += (note.isEmpty() ? QString() : QStringLiteral("\n")) + answer.second;
        }
        return true;
    } catch (const RunError&) { // silent by design
        return false;
    }
}

QString AnswersOfDay::noteOf(const QString& employee) const {
    return m_notes.value(keyOf(employee));
}

} // namespace tallyroom
