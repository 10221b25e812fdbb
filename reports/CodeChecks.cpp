#include "common/RunError.h"
#include "common/TextOrder.h"
#include "reports/CheckFamilies.h"
#include "store/Readable.h"

#include <QMap>
#include <algorithm>

namespace tallyroom {

namespace {

QStringList texts(Database& database, const QString& statement) {
    const auto rows = database.openRecordset(statement, RecordsetType::Snapshot);
    QStringList result;
    for (; !rows->eof(); rows->moveNext())
        result << Readable::text(rows->field(0));
    return result;
}

// Codes as they are spelled, with how often.
using Spelled = QMap<QString, int>;

class CodeCheck {
public:
    CodeCheck(const CheckedData& data, Database& host)
        : m_data(data),
          m_absentCodes(texts(host, QStringLiteral("Select [absent_code] from [Absentee];"))) {
        for (const CheckedEntry& entry : data.entries) {
            if (entry.isInRange)
                ++m_audited[entry.code.trimmed()];
        }
    }

    Check gone() const {
        Check check{QStringLiteral("Codes of people who are no longer there"), {}};
        for (auto code = m_audited.cbegin(); code != m_audited.cend(); ++code) {
            if (!m_data.employee(code.key()))
                check.findings.push_back(
                    {Variant::null(), code.key(),
                     QStringLiteral("Entries in the audit: %1").arg(*code),
                     QStringLiteral("Nothing, if he has left; else correct the code.")});
        }
        for (const HistoryOfCode& known : m_data.history) {
            if (!m_data.employee(known.code))
                check.findings.push_back(
                    {known.last, known.code,
                     QStringLiteral("Records in the history: %1, of which this is the last day")
                         .arg(known.records),
                     QStringLiteral("Nothing, if he has left; else correct the code.")});
        }
        return check;
    }

    Check apostrophes() const {
        Check check{QStringLiteral("Codes with an apostrophe"), {}};
        const auto look = [&](const QString& what, const QString& code) {
            if (code.contains(u'\''))
                check.findings.push_back(
                    {Variant::null(), code, what,
                     QStringLiteral("Change the code: nothing can be recorded with it.")});
        };
        for (const Employee& employee : m_data.host.employees)
            look(QStringLiteral("Employee"), employee.code);
        for (const Shift& shift : m_data.host.shifts)
            look(QStringLiteral("Shift"), shift.code);
        for (const QString& department : sorted(m_data.host.departments.keys()))
            look(QStringLiteral("Department"), department);
        for (const QString& qualification : sorted(qualifications()))
            look(QStringLiteral("Qualification"), qualification);
        for (const QString& code : m_absentCodes)
            look(QStringLiteral("Absent code"), code);
        return check;
    }

    Check spellings() const {
        Check check{QStringLiteral("Codes in several spellings"), {}};
        QStringList employees;
        for (const Employee& employee : m_data.host.employees)
            employees << employee.code.trimmed();
        compare(check, QStringLiteral("Audit"), m_audited, employees);
        Spelled history;
        for (const HistoryOfCode& known : m_data.history)
            history[known.code] += known.records;
        for (const HistoryAnswer& transaction : m_data.transactions)
            ++history[transaction.code];
        compare(check, QStringLiteral("History"), history, employees);
        QStringList shifts;
        for (const Shift& shift : m_data.host.shifts)
            shifts << shift.code;
        compare(check, QStringLiteral("Employees' shift"), ofEmployees(&Employee::shift), shifts);
        compare(check, QStringLiteral("Employees' department"), ofEmployees(&Employee::department),
                m_data.host.departments.keys());
        return check;
    }

    Check unknownShifts() const {
        Check check{QStringLiteral("Shifts that are not there"), {}};
        QMap<QString, QStringList> people;
        for (const Employee& employee : m_data.host.employees) {
            const bool isKnown = std::ranges::any_of(m_data.host.shifts, [&](const Shift& shift) {
                return TextOrder::isSame(shift.code, employee.shift);
            });
            if (!isKnown)
                people[employee.shift] << m_data.described(employee.code);
        }
        for (auto shift = people.cbegin(); shift != people.cend(); ++shift)
            check.findings.push_back(
                {Variant::null(), shift.key(),
                 (shift.key().isEmpty() ? QStringLiteral("No shift: ") : QStringLiteral("Of ")) +
                     listed(*shift),
                 QStringLiteral("Give them a shift: their answers are not recorded.")});
        return check;
    }

    Check associations(Database& addIn) const {
        Check check{QStringLiteral("Absent codes for answers"), {}};
        const auto rows = addIn.openRecordset(QStringLiteral("Select * from [tlyr_assoc];"),
                                              RecordsetType::Snapshot);
        const QString remedy = QStringLiteral("Choose it: Setup, Associations.");
        if (rows->eof()) {
            check.findings.push_back({Variant::null(), QString(),
                                      QStringLiteral("None is set up: no answer can be recorded"),
                                      remedy});
            return check;
        }
        const bool hasDouble = std::ranges::any_of(answerKinds, [&](const AnswerKind& kind) {
            return kind.rate == Rate::Double && !codeOf(*rows, kind).isEmpty();
        });
        for (const AnswerKind& kind : answerKinds) {
            const QString code = codeOf(*rows, kind);
            const QString answer =
                actionName(kind.action) + QStringLiteral(" at ") + rateName(kind.rate);
            if (code.isEmpty() && (hasDouble || kind.rate != Rate::Double))
                check.findings.push_back({Variant::null(), QString(),
                                          answer + QStringLiteral(": no code is set up"), remedy});
            if (!code.isEmpty() && !isAbsentCode(code))
                check.findings.push_back({Variant::null(), code,
                                          answer + QStringLiteral(": there is no such code"),
                                          remedy});
        }
        return check;
    }

private:
    static QStringList sorted(QStringList texts) {
        texts.sort();
        return texts;
    }

    QStringList qualifications() const {
        QStringList held;
        for (const Employee& employee : m_data.host.employees)
            held << employee.qualifications;
        held.removeDuplicates();
        return held;
    }

    static QString codeOf(const Recordset& row, const AnswerKind& kind) {
        return Readable::text(row.field(QString::fromUtf16(kind.association)));
    }

    bool isAbsentCode(const QString& code) const {
        return std::ranges::any_of(
            m_absentCodes, [&](const QString& known) { return TextOrder::isSame(known, code); });
    }

    Spelled ofEmployees(QString Employee::*field) const {
        Spelled spelled;
        for (const Employee& employee : m_data.host.employees)
            ++spelled[employee.*field];
        return spelled;
    }

    // What means one of the known codes and is written otherwise.
    static void compare(Check& check, const QString& where, const Spelled& used,
                        const QStringList& known) {
        QHash<QString, QString> right;
        for (const QString& code : known)
            right.insert(TextOrder::folded(code), code);
        for (auto code = used.cbegin(); code != used.cend(); ++code) {
            const QString meant = right.value(TextOrder::folded(code.key()), code.key());
            if (meant != code.key())
                check.findings.push_back(
                    {Variant::null(), code.key(),
                     QStringLiteral("%1: it is \"%2\" there (%3 times)")
                         .arg(where, code.key(), QString::number(*code)),
                     QStringLiteral("Write \"%1\", or boards miss it.").arg(meant)});
        }
    }

    const CheckedData& m_data;
    QStringList m_absentCodes;
    Spelled m_audited; // employees' codes in the audit's entries of the range
};

} // namespace

void checkCodes(const CheckedData& data, Database& host, Database& addIn, Findings& findings) {
    const CodeCheck codes(data, host);
    findings.checks.push_back(codes.gone());
    findings.checks.push_back(codes.apostrophes());
    findings.checks.push_back(codes.spellings());
    findings.checks.push_back(codes.unknownShifts());
    findings.checks.push_back(codes.associations(addIn));
}

} // namespace tallyroom
