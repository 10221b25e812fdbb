#include "reports/CheckedData.h"

#include "audit/EmployeeKey.h"
#include "audit/Moments.h"
#include "common/AnswerLimits.h"
#include "reports/AuditReading.h"
#include "reports/StandingReading.h"
#include "store/Readable.h"

#include <QSet>
#include <algorithm>

namespace tallyroom {

namespace {

std::shared_ptr<Recordset> rowsOf(Database& database, const QString& statement) {
    return database.openRecordset(statement, RecordsetType::Snapshot);
}

std::optional<QDate> dayOf(const Variant& value) {
    const Variant date = Readable::date(value);
    return date.isNull() ? std::nullopt : std::optional(Dates::dayOf(date.toDate()));
}

QDate earlier(QDate day, const Variant& other) {
    return std::min(day, dayOf(other).value_or(day));
}

QDate later(QDate day, const Variant& other) {
    return std::max(day, dayOf(other).value_or(day));
}

void readEntries(CheckedData& data, Database& addIn) {
    const Period& recorded = data.recorded;
    const auto summary = rowsOf(
        addIn,
        QStringLiteral("Select Min([Date]), Max([Date]), Count(*) from [TLYR_Audit] where ") +
            Moments::within(QStringLiteral("Now"), recorded.from, recorded.to) + u';');
    data.offered = {earlier(recorded.from, summary->field(0)),
                    later(recorded.to.addDays(AnswerLimits::farthest), summary->field(1))};
    int unread = summary->field(2).toLong();
    for (Standing::EntryKey& key :
         entriesWithin(addIn, QStringLiteral("Date"), data.offered.from, data.offered.to)) {
        const QDate day = Dates::dayOf(key.now);
        const bool isInRange = day >= recorded.from && day <= recorded.to;
        unread -= isInRange;
        data.entries.push_back({std::move(key), isInRange});
    }
    if (unread > 0)
        data.notes << QStringLiteral("Entries of the audit that cannot be read and were not "
                                     "checked: %1.")
                          .arg(unread);
}

// Both at once, from the index alone.
QString absencesAndAnswers(const Period& days) {
    QStringList columns;
    QStringList minutes;
    for (const AnswerKind& kind : answerKinds) {
        columns << QStringLiteral("[%1]").arg(QString::fromUtf16(kind.history));
        minutes << QStringLiteral("(%1 <> 0)").arg(columns.back());
    }
    return QStringLiteral("Select [thist_emp], [shift_date], %1 from [TimeHistory] where %2 and "
                          "(([thist_record_type] = 'AR') or %3);")
        .arg(columns.join(QStringLiteral(", ")),
             Moments::within(QStringLiteral("shift_date"), days.from, days.to),
             minutes.join(QStringLiteral(" or ")));
}

// Whether the row holds an answer.
bool takeAnswers(CheckedData& data, const Recordset& row, const QString& code, QDate day) {
    bool isAnswer = false;
    for (std::size_t at = 0; at < std::size(answerKinds); ++at) {
        const Variant minutes = Readable::number(row.field(static_cast<int>(at) + 2));
        if (minutes.isNull())
            continue;
        isAnswer = true;
        data.transactions.push_back({code, day, &answerKinds[at], minutes.toLong()});
    }
    return isAnswer;
}

void readHistory(CheckedData& data, Database& host) {
    QSet<QDate> asked;
    for (const CheckedEntry& entry : data.entries)
        asked.insert(entry.day());
    const auto rows = rowsOf(host, absencesAndAnswers(data.offered));
    for (; !rows->eof(); rows->moveNext()) {
        const auto code = Readable::key(rows->field(0));
        const auto day = dayOf(rows->field(1));
        if (code && day && !takeAnswers(data, *rows, *code, *day) && asked.contains(*day))
            data.absences.insert(personDay(*code, *day));
    }
}

void readHistoryCodes(CheckedData& data, Database& host) {
    const auto rows = rowsOf(
        host,
        QStringLiteral(
            "Select [thist_emp], Count(*), Max([shift_date]) from [TimeHistory] where ") +
            Moments::within(QStringLiteral("shift_date"), data.recorded.from, data.recorded.to) +
            QStringLiteral(" group by [thist_emp];"));
    for (; !rows->eof(); rows->moveNext()) {
        if (const auto code = Readable::key(rows->field(0)))
            data.history.push_back(
                {*code, rows->field(1).toLong(), Readable::date(rows->field(2))});
    }
}

void readPeriod(CheckedData& data, const QString& dataFolder) {
    try {
        data.period = TotallingPeriod::read(dataFolder);
    } catch (const RunError& error) {
        if (error.number() != TotallingPeriod::unreadable)
            throw;
        data.notes << error.description();
    }
}

} // namespace

PersonDay personDay(const QString& code, QDate day) {
    return {employeeKey(code), day};
}

const Employee* CheckedData::employee(const QString& code) const {
    return employees.value(employeeKey(code));
}

QString CheckedData::described(const QString& code) const {
    const Employee* known = employee(code);
    return known && !known->name.isEmpty() ? code.trimmed() + u' ' + known->name : code.trimmed();
}

Period recordingDays(Database& addIn) {
    const auto rows = rowsOf(addIn, QStringLiteral("Select Max([Now]) from [TLYR_Audit];"));
    const QDate last = dayOf(rows->field(0)).value_or(QDate::currentDate());
    return {last.addDays(-13), last};
}

std::unique_ptr<CheckedData> readCheckedData(const QString& dataFolder, Database& host,
                                             Database& addIn, const Period& recorded,
                                             const ReportProgress& progress) {
    constexpr int steps = 5;
    auto data = std::make_unique<CheckedData>();
    data->recorded = {std::min(recorded.from, recorded.to), std::max(recorded.from, recorded.to)};
    data->host = readHostData(host);
    for (const Employee& employee : data->host.employees)
        data->employees.insert(employeeKey(employee.code), &employee);
    readPeriod(*data, dataFolder);
    requireNotCancelled(progress, 1, steps);
    readEntries(*data, addIn);
    requireNotCancelled(progress, 2, steps);
    readHistory(*data, host);
    requireNotCancelled(progress, 3, steps);
    readHistoryCodes(*data, host);
    requireNotCancelled(progress, 4, steps);
    return data;
}

} // namespace tallyroom
