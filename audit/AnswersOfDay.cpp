#include "audit/AnswersOfDay.h"

#include "audit/Contacts.h"
#include "audit/EmployeeKey.h"
#include "audit/Moments.h"
#include "audit/Standing.h"
#include "common/AnswerKind.h"
#include "common/RunError.h"
#include "common/Units.h"
#include "store/Readable.h"
#include "store/Recordset.h"
#include "store/Workspace.h"

#include <map>
#include <utility>

namespace tallyroom {

namespace {

// Without an order, which would have the engine walk an index.
QString statement(Date day) {
    const QDate only = Dates::dayOf(day);
    return QStringLiteral("Select [Emp_Code], [Now], [User], [Action], [OT], [tHistField] from "
                          "[TLYR_Audit] where ") +
           Moments::within(QStringLiteral("Date"), only, only) +
           QStringLiteral(" and ([Action] = 0 or [Action] = 1);");
}

enum Column { EmpCode, Now, User, Action, OT, HistField }; // of the statement

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
               amount(minutes.toLong(), rateOf(*column)) + QStringLiteral(", ") +
               Moments::text(moment.toDate()) + QStringLiteral(" by ") + *user;
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

struct Note {
    QString key; // of the employee
    QString text;
    bool isAnswer;
};

// By time: who is asked again after a call without an answer has both.
using NotesByTime = std::multimap<Date, Note>;

void addAnswers(NotesByTime& notes, Recordset& entries) {
    EntryTexts texts;
    for (; !entries.eof(); entries.moveNext()) {
        const auto code = Readable::key(entries.field(EmpCode));
        const Variant moment = Readable::date(entries.field(Now));
        const auto text = texts.of(entries, moment);
        if (code && text)
            notes.emplace(moment.toDate(), Note{employeeKey(*code), *text, true});
    }
}

void addContacts(NotesByTime& notes, Recordset& rows) {
    for (const Contacts::Contact& contact : Contacts::contactsIn(rows))
        notes.emplace(contact.now, Note{employeeKey(contact.code), Contacts::text(contact), false});
}

// The entries and the contacts; data of another version has no table for these.
std::vector<std::shared_ptr<Recordset>> open(Database& addIn, Date day) {
    const QDate only = Dates::dayOf(day);
    try {
        return addIn.openSnapshots({statement(day), Contacts::statement(only, only)});
    } catch (const RunError& error) {
        if (!Standing::isMissing(error.number()))
            throw;
        return addIn.openSnapshots({statement(day)});
    }
}

NotesByTime notesOf(Database& addIn, Date day) {
    const auto opened = open(addIn, day);
    NotesByTime notes;
    addAnswers(notes, *opened.front());
    if (opened.size() > 1)
        addContacts(notes, *opened.back());
    return notes;
}

} // namespace

bool AnswersOfDay::read(const QString& dataPath, Date day) {
    if (m_day != day)
        clear();
    m_day = day;
    try {
        const NotesByTime byTime = notesOf(*Workspace::openAddIn(dataPath, WhenInUse::Fail), day);
        m_known.clear();
        for (const auto& [moment, note] : byTime) {
            Known& known = m_known[note.key];
            known.note += (known.note.isEmpty() ? QString() : QStringLiteral("\n")) + note.text;
            known.hasAnswered = known.hasAnswered || note.isAnswer;
        }
        return true;
    } catch (const RunError&) { // silent by design
        return false;
    }
}

QString AnswersOfDay::noteOf(const QString& employee) const {
    return m_known.value(employeeKey(employee)).note;
}

bool AnswersOfDay::hasAnswered(const QString& employee) const {
    return m_known.value(employeeKey(employee)).hasAnswered;
}

} // namespace tallyroom
