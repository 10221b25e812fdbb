#include "reports/StandingReport.h"

#include "audit/Contacts.h"
#include "audit/EmployeeKey.h"
#include "common/Counted.h"
#include "reports/Absences.h"
#include "reports/AuditReading.h"
#include "reports/Group.h"
#include "reports/StandingReading.h"
#include "store/Workspace.h"

namespace tallyroom {

namespace {

using Standing::EntryKey;

constexpr qsizetype namedAtMost = 40; // of a list of people

// What was known of people's answers for the day when an entry was recorded.
class AskedBefore {
public:
    AskedBefore(const std::vector<EntryKey>& entries,
                const std::vector<Contacts::Contact>& contacts, const EntryKey& entry) {
        for (const EntryKey& other : entries) {
            if (other.now <= entry.now)
                m_notes[employeeKey(other.code)] << entryText(other);
        }
        for (const Contacts::Contact& contact : contacts) {
            if (contact.now <= entry.now)
                m_notes[employeeKey(contact.code)] << Contacts::text(contact);
        }
    }

    // Empty for who had not been asked.
    QString of(const Standing::Listed& listed) const {
        const QStringList notes = m_notes.value(employeeKey(listed.code));
        if (notes.isEmpty() && listed.wasAsked)
            return QStringLiteral("an answer that was taken back since");
        return notes.join(QStringLiteral("; "));
    }

private:
    QHash<QString, QStringList> m_notes; // by folded code
};

class Writer {
public:
    Writer(const QString& dataFolder, const ReportRequest& request)
        : m_dataFolder(dataFolder), m_request(request),
          m_host(Workspace::openHostOptions(dataFolder)), m_addIn(Workspace::openAddIn(dataFolder)),
          m_data(readHostData(*m_host)),
          m_absences(absencesOn(*m_host, groupFilter({}), request.date)),
          m_entries(entriesOf(*m_addIn, request.date)),
          m_contacts(Contacts::read(*m_addIn, request.date, request.date)) {}

    Report write(const ReportProgress& progress) {
        m_report.title = QStringLiteral("Standing");
        m_report.details << QStringLiteral("%1, overtime on %2 %3")
                                .arg(who(m_request.employee),
                                     m_request.date.toString(QStringLiteral("dddd")),
                                     shownDay(m_request.date));
        const std::vector<EntryKey> own = ownEntries();
        int done = 0;
        for (const EntryKey& entry : own) {
            requireNotCancelled(progress, done++, static_cast<int>(own.size()));
            describe(entry);
        }
        if (own.empty() && !isKnown(m_request.employee))
            throw BadRequest{
                QStringLiteral("There is no employee \"%1\".").arg(m_request.employee)};
        if (own.empty())
            say(QStringLiteral("No answer is recorded for that day. One that was taken back has "
                               "left no trace."));
        describeOwnContacts();
        return std::move(m_report);
    }

private:
    void say(const QString& paragraph) { m_report.words << paragraph; }

    bool isKnown(const QString& code) const {
        return std::ranges::any_of(m_data.employees, [&](const Employee& each) {
            return employeeKey(each.code) == employeeKey(code);
        });
    }

    // "1264 Andersen, Chloé"
    QString who(const QString& code) const {
        return (code + u' ' + m_data.employeeName(code)).trimmed();
    }

    std::vector<EntryKey> ownEntries() const {
        std::vector<EntryKey> own;
        for (const EntryKey& entry : m_entries) {
            if (employeeKey(entry.code) == employeeKey(m_request.employee))
                own.push_back(entry);
        }
        return own;
    }

    void describe(const EntryKey& entry) {
        if (!m_report.words.isEmpty())
            say({});
        say(entryText(entry) + u'.');
        if (entry.action == AuditAction::Deleted)
            say(QStringLiteral("This answer was deleted in the audit later."));
        const Stood stood = readStanding(m_dataFolder, *m_host, *m_addIn, entry, m_request.order);
        if (stood.isRebuilt && !m_report.details.contains(whatRebuildingLacks()))
            m_report.details << whatRebuildingLacks();
        describeBoard(stood);
        describePlace(stood, entry);
    }

    void describeBoard(const Stood& stood) {
        const Standing::Snapshot& board = stood.board;
        const QString bucket =
            board.bucket.isEmpty() ? QString() : QStringLiteral(" of %1").arg(board.bucket);
        const QString order = !board.ordering.isEmpty()
                                  ? QStringLiteral("in the order \"%1\"").arg(board.ordering)
                              : stood.isRebuilt ? QStringLiteral("by their totals")
                                                : QStringLiteral("in no order of the user's");
        say(QStringLiteral("On the board stood %1%2, %3.")
                .arg(counted(board.listed, u"employee", u"employees"), bucket, order));
        say(QStringLiteral("The totals covered %1 and counted %2%3.")
                .arg(periodText(board), countedText(board),
                     board.multiply ? QStringLiteral(", each hour weighed by its rate")
                                    : QString()));
    }

    static QString periodText(const Standing::Snapshot& board) {
        if (!board.period)
            return QStringLiteral("all dates");
        return QStringLiteral("%1 to %2")
            .arg(shownDay(Variant(board.period->first)), shownDay(Variant(board.period->second)));
    }

    static QString countedText(const Standing::Snapshot& board) {
        return board.totalWithAccepted ? QStringLiteral("overtime worked, accepted and declined")
                                       : QStringLiteral("overtime worked and declined");
    }

    void describePlace(const Stood& stood, const EntryKey& entry) {
        if (stood.place == 0) {
            say(QStringLiteral("Where %1 stood is not known: the list does not have this code.")
                    .arg(who(entry.code)));
            return;
        }
        const Standing::Listed& own = stood.board.rows[static_cast<std::size_t>(stood.place - 1)];
        const QString seniority =
            stood.seniority.isNull()
                ? QString()
                : QStringLiteral(", seniority number %1").arg(stood.seniority.toText());
        say(QStringLiteral("%1 stood in place %2 of %3 with a total of %4%5.")
                .arg(who(entry.code))
                .arg(stood.place)
                .arg(stood.board.listed)
                .arg(own.total.isEmpty() ? QStringLiteral("nothing") : own.total, seniority));
        describeOthers(stood, AskedBefore(m_entries, m_contacts, entry));
    }

    void describeOthers(const Stood& stood, const AskedBefore& asked) {
        QStringList answered;
        QStringList away;
        QStringList passedOver;
        for (int place = 1; place < stood.place; ++place) {
            const Standing::Listed& other = stood.board.rows[static_cast<std::size_t>(place - 1)];
            const QString note = asked.of(other);
            const QString line =
                QStringLiteral("%1. %2, total %3")
                    .arg(place)
                    .arg(who(other.code),
                         other.total.isEmpty() ? QStringLiteral("nothing") : other.total);
            const QString absence = m_absences.value(other.code);
            if (!note.isEmpty())
                answered << line + QStringLiteral(" (%1)").arg(note);
            else if (!absence.isEmpty())
                away << line + QStringLiteral(" (%1)").arg(absence);
            else
                passedOver << line;
        }
        sayList(QStringLiteral("Nobody stood before who had been asked."),
                QStringLiteral("Stood before and had been asked: %1"), answered);
        if (!away.isEmpty())
            sayList({}, QStringLiteral("Stood before and were absent that day: %1"), away);
        sayList(QStringLiteral("Nobody was passed over."),
                QStringLiteral("Stood before and had not been asked (passed over): %1"),
                passedOver);
    }

    void sayList(const QString& nobody, const QString& heading, const QStringList& lines) {
        if (lines.isEmpty()) {
            say(nobody);
            return;
        }
        const QStringList named = lines.first(std::min(lines.size(), namedAtMost));
        const QString more = lines.size() > namedAtMost
                                 ? QStringLiteral("; and %1 more").arg(lines.size() - namedAtMost)
                                 : QString();
        say(heading.arg(lines.size()) + u'.');
        say(named.join(QStringLiteral("; ")) + more);
    }

    void describeOwnContacts() {
        for (const Contacts::Contact& contact : m_contacts) {
            if (employeeKey(contact.code) == employeeKey(m_request.employee))
                say(QStringLiteral("Called: ") + Contacts::text(contact));
        }
    }

    const QString& m_dataFolder;
    const ReportRequest& m_request;
    std::shared_ptr<Database> m_host;  // bcx.mdb
    std::shared_ptr<Database> m_addIn; // aidb01.mdb
    HostData m_data;
    QHash<QString, QString> m_absences; // that day: reasons, by code
    std::vector<EntryKey> m_entries;    // of the day, everybody's
    std::vector<Contacts::Contact> m_contacts;
    Report m_report;
};

} // namespace

Report standingReport(const QString& dataFolder, const ReportRequest& request,
                      const ReportProgress& progress) {
    return Writer(dataFolder, request).write(progress);
}

} // namespace tallyroom
