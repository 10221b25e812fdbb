// What came of calls that ended without an answer: the board cannot record it.
#pragma once

#include "common/Dates.h"
#include "store/Database.h"

#include <QString>
#include <vector>

namespace tallyroom::Contacts {

// Values of the table's Outcome column.
enum class Outcome { NoAnswer = 0, LeftMessage = 1, NotAvailable = 2 };
inline constexpr Outcome outcomes[] = {Outcome::NoAnswer, Outcome::LeftMessage,
                                       Outcome::NotAvailable};
QString outcomeName(Outcome outcome); // "No answer", "Left message", "Not available"

struct Contact {
    Date now; // when the call ended
    QString user;
    QString code;
    Date date; // of the overtime
    Outcome outcome = Outcome::NoAnswer;
    QString remark; // at most 255 characters are kept
};

// "No answer, 11/21/2026 9:12 by jo: tries again at ten"
QString text(const Contact& contact);

// Keeps a contact, and tells other desks of it. Raises what the database raises; 3192 for data of
// another version, which has no table for it.
void record(const QString& dataPath, const Contact& contact);

// Those for overtimes from one day to another, both included, as they were recorded. None in data
// of another version. Entries that cannot be read are left out. Raises what the database raises.
std::vector<Contact> read(Database& addIn, QDate from, QDate to);

// The same in two steps, for who asks for more in one question: the statement, which fails in data
// of another version, and what its recordset holds.
QString statement(QDate from, QDate to);
std::vector<Contact> contactsIn(Recordset& rows);

} // namespace tallyroom::Contacts
