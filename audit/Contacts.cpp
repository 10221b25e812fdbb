#include "audit/Contacts.h"

#include "audit/DeskNews.h"
#include "audit/Moments.h"
#include "audit/Standing.h"
#include "common/RunError.h"
#include "store/Readable.h"
#include "store/Recordset.h"
#include "store/Workspace.h"

#include <algorithm>

namespace tallyroom::Contacts {

namespace {

constexpr qsizetype longestRemark = 255;

const QString table = QStringLiteral("TLYR_Contact");

QStringList columns() {
    return {QStringLiteral("Now"),  QStringLiteral("User"),    QStringLiteral("Emp_Code"),
            QStringLiteral("Date"), QStringLiteral("Outcome"), QStringLiteral("Remark")};
}
enum Column { Now, User, EmpCode, Day, Result, Remark };

std::optional<Outcome> outcomeOf(const Variant& value) {
    const Variant number = Readable::number(value);
    const auto found = std::ranges::find_if(outcomes, [&](Outcome known) {
        return !number.isNull() && number.toLong() == static_cast<int>(known);
    });
    return found == std::end(outcomes) ? std::nullopt : std::optional(*found);
}

std::optional<Contact> contactOf(const Recordset& row) {
    const Variant now = Readable::date(row.field(Now));
    const auto code = Readable::key(row.field(EmpCode));
    const Variant day = Readable::date(row.field(Day));
    const auto outcome = outcomeOf(row.field(Result));
    if (now.isNull() || !code || day.isNull() || !outcome)
        return std::nullopt;
    return Contact{now.toDate(), Readable::text(row.field(User)),  *code, day.toDate(),
                   *outcome,     Readable::text(row.field(Remark))};
}

} // namespace

QString outcomeName(Outcome outcome) {
    switch (outcome) {
    case Outcome::LeftMessage:
        return QStringLiteral("Left message");
    case Outcome::NotAvailable:
        return QStringLiteral("Not available");
    default:
        return QStringLiteral("No answer");
    }
}

QString text(const Contact& contact) {
    const QString remark =
        contact.remark.isEmpty() ? QString() : QStringLiteral(": ") + contact.remark;
    return QStringLiteral("%1, %2 by ")
               .arg(outcomeName(contact.outcome), Moments::text(contact.now)) +
           contact.user + remark;
}

void record(const QString& dataPath, const Contact& contact) {
    const auto addIn = Workspace::openAddIn(dataPath);
    addIn->appendRows(
        table, columns(),
        {{contact.now, contact.user, contact.code.trimmed(), contact.date,
          static_cast<std::int32_t>(contact.outcome), contact.remark.left(longestRemark)}});
    addIn->announce(DeskNews::contactRecorded);
}

QString statement(QDate from, QDate to) {
    return QStringLiteral("Select [%1] from [%2] where ")
               .arg(columns().join(QStringLiteral("], [")), table) +
           Moments::within(columns()[Day], from, to) + QStringLiteral(" order by [Now];");
}

std::vector<Contact> contactsIn(Recordset& rows) {
    std::vector<Contact> contacts;
    for (; !rows.eof(); rows.moveNext()) {
        if (auto contact = contactOf(rows))
            contacts.push_back(std::move(*contact));
    }
    return contacts;
}

std::vector<Contact> read(Database& addIn, QDate from, QDate to) {
    try {
        return contactsIn(*addIn.openRecordset(statement(from, to), RecordsetType::Snapshot));
    } catch (const RunError& error) {
        if (!Standing::isMissing(error.number()))
            throw;
        return {};
    }
}

} // namespace tallyroom::Contacts
