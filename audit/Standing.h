// Where employees stood on the board when their answers were given, kept beside the audit.
#pragma once

#include "common/AnswerKind.h"
#include "common/Variant.h"

#include <QStringList>
#include <optional>
#include <vector>

namespace tallyroom {

class Database;
class Recordset;

namespace Standing {

// A row of the board.
struct Listed {
    QString code;
    QString total;         // as shown
    bool wasAsked = false; // for the same day, as far as the board knew
};

// The board as it stood when a command began. All answers of the command share it.
struct Snapshot {
    QString ordering;                            // its description; empty: none was in force
    QString settings;                            // its details
    std::optional<std::pair<Date, Date>> period; // nothing: the totals covered all dates
    bool multiply = false;
    bool breakOut = false;
    bool totalWithAccepted = true;
    QString bucket;           // the selection's name; empty for one without
    int listed = 0;           // how many were on the board
    std::vector<Listed> rows; // from above; those below the last one answered are left out
};

// The key of an audit entry, as its table keeps it. Positions are those of keyColumns().
struct EntryKey {
    Date now;
    QString user;
    QString code;
    Date date; // of the overtime
    AuditAction action = AuditAction::Accepted;
    std::int32_t minutes = 0;
    QString historyColumn;
};

// What is kept of one answer besides its entry's key.
struct Place {
    QString command; // a UUID
    int place = 0;   // from 1
    int listed = 0;
    Variant total;     // minutes, or Null
    Variant seniority; // a number, or Null
};

QStringList keyColumns();
// The same as values of an Insert. Raises 3075 for a text that no statement can hold.
QString keyValues(const EntryKey& key);

// Statements on aidb01.mdb: what the answers of a command share, and an answer's place. The second
// one raises 3075 as keyValues() does.
QString keepSnapshot(const QString& command, const Snapshot& snapshot);
QString keepPlace(const EntryKey& key, const Place& place);

// Statements that take an entry's standing along when its answer is taken back: its own row, and
// the snapshot of a command that has no other left. Nothing for an entry that cannot be told by its
// values.
QStringList takeBack(const Recordset& entry);

// The statement that marks the standing of the entries that a condition selects as deleted there.
QString markDeleted(const QString& condition);

// Runs statements that keep or change a standing. Errors are silent by design: what is kept beside
// an answer hinders nothing, and in data of another version there is no table for it.
void write(Database& addIn, const QStringList& statements);

// Whether an error says that the tables are not there: data that another version has made.
bool isMissing(int errorNumber);

// A snapshot's text, and back; nothing for a text that is none.
QString toText(const Snapshot& snapshot);
std::optional<Snapshot> fromText(const QString& text);

} // namespace Standing
} // namespace tallyroom
