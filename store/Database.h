// A connection to one database file.
#pragma once

#include "common/Variant.h"
#include "store/Schema.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

namespace tallyroom {

class Recordset;

using Row = std::vector<Variant>;
using TakeRows = std::function<void(const std::vector<Row>&)>;

// A table as it is found in a file, its columns with the nearest types that there are.
struct TableFormat {
    struct Column {
        QString name;
        Schema::ColumnType type;
        int width = 0;
    };
    QString name;
    std::vector<Column> columns;
};

// See Database::changeMark(). Marks of different connections do not compare.
struct ChangeMark {
    qint64 byOthers = 0;
    qint64 byUs = 0;
    qint64 undone = 0;
    friend bool operator==(const ChangeMark&, const ChangeMark&) = default;
};

enum class RecordsetType { Dynaset, Snapshot };

// Whether others who use a file are waited for, two seconds at the most, or hinder at once.
enum class WhenInUse { Wait, Fail };

enum class TransactionKind {
    Read,   // rows are read as they stand at the first read; others who want to write wait
    Write,  // others may read until it is committed, which fails while they do
    Reserve // nobody else reads or writes: what could hinder the commit shows at the beginning
};

// Statements are written in the desktop engine's SQL; the store translates them. Errors are
// RunErrors with that engine's numbers, texts and sources. A connection closes with its last
// owner; recordsets are owners.
class Database : public std::enable_shared_from_this<Database> {
public:
    virtual ~Database() = default;

    // Runs one Delete, Insert, Update or Drop statement. Rows that cannot be written (a duplicate
    // key, a required value missing) are skipped and the others written; a statement that cannot
    // be understood, an unknown name or an unavailable file raise. An Insert into another file
    // cannot run in a transaction: raises 3219.
    virtual void execute(const QString& sql) = 0;

    // The same for several: all of them or, when one raises, none. A single question to a server.
    virtual void executeAll(const QStringList& statements) = 0;

    // Opens the rows of a Select statement. The first row, if any, is current.
    virtual std::shared_ptr<Recordset> openRecordset(const QString& sql, RecordsetType type) = 0;

    // Opens several Select statements as snapshots, or raises what opening one of them raises. A
    // single question to a server, but not one moment: see Transaction.
    virtual std::vector<std::shared_ptr<Recordset>>
    openSnapshots(const QStringList& statements) = 0;

    // Whether the table is there with all columns of `table` in their types, none with a value of
    // its own, and without triggers or rules: then a row holds what was written into it.
    [[nodiscard]] virtual bool keepsWhatIsWritten(const Schema::Table& table) = 0;

    // Empties the table and fills it anew, in one write unless a transaction is open. The values of
    // a row go to `columns` in this order and convert as an Insert converts them; rows that the
    // table cannot keep are skipped. Raises what an Insert raises; nothing is changed then.
    virtual void replaceRows(const QString& table, const QStringList& columns,
                             const std::vector<Row>& rows) = 0;
    // The same without emptying it first.
    virtual void appendRows(const QString& table, const QStringList& columns,
                            const std::vector<Row>& rows) = 0;

    // The file's tables, by name; views are left out.
    [[nodiscard]] virtual std::vector<TableFormat> tables() = 0;
    // Gives all columns of all rows in the order of their entry, so many rows at a time, as they
    // stood at one moment. `take` uses other databases only.
    virtual void readPortions(const QString& table, std::size_t portion, const TakeRows& take) = 0;

    // Transactions do not nest: see Transaction.
    virtual void begin(TransactionKind kind) = 0;
    // Raises; the statements are then undone. False when they are not kept yet: the files of a site
    // on a server share one transaction, which is kept or undone with the last of those that began
    // in it.
    virtual bool commit() = 0;
    virtual void rollback() noexcept = 0;
    // No longer once a statement met a disk that fails, which undoes the whole transaction.
    virtual bool inTransaction() const = 0;

    // Stays the same as long as nobody changes the file, through this connection or another one.
    virtual ChangeMark changeMark() = 0;

    // What statements do when others use the file.
    virtual void setWhenInUse(WhenInUse answer) = 0;

    // Calls back again and again during a statement that takes long, about every tenth of a second:
    // by the work that is done, not by the clock. The callback neither uses a database nor throws;
    // an empty one, or the end of this connection, ends it.
    virtual void setProgress(std::function<void()> callback) = 0;

    // Whether the connection to the server has been lost, which shows in what is asked of it. Only
    // opening the file again helps, and what belonged to this connection alone is gone. Never so
    // for a file in a folder.
    [[nodiscard]] virtual bool isLost() const = 0;

    // Tells all others who work on the same site, once the open transaction is kept. Nobody is told
    // of a folder.
    virtual void announce(const QString& news) = 0;
    // Calls back from the event loop with what others have announced since the last call; an empty
    // callback, or the end of this connection, ends it. Nothing announced: the connection to the
    // server is lost, and this is the last call. Only the last callback given on a site is called.
    // Nothing may be thrown.
    virtual void setListener(std::function<void(const QStringList& news)> callback) = 0;

    // Whether the file that was opened is still the one at its path.
    [[nodiscard]] virtual bool isInPlace() = 0;

    // Reads the whole file. Raises 3049 for one whose structure is damaged; a value that was
    // changed inside a sound structure cannot be told.
    virtual void checkStructure() = 0;

    // Closes the file at once; later use of the connection or its recordsets raises 3420.
    virtual void close() = 0;
};

// Scope in which statements share one write, or many rows are read at one state of the file.
// Leaving it without a commit undoes the statements. Inside another transaction it does nothing.
class [[nodiscard]] Transaction {
public:
    // Raises what hinders it: 3196 (in use), and for Reserve 3027 (read-only), 3024 (the file is no
    // longer there), 3420 (another file has taken its place), 3051 and 3026 (the folder cannot be
    // written, the disk is full). A transaction that is open already reserves nothing more.
    Transaction(std::shared_ptr<Database> database, TransactionKind kind);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    bool commit(); // see Database

private:
    std::shared_ptr<Database> m_database; // null once it is over, or was not ours
};

// Scope in which statements fail at once where they would wait for others.
class [[nodiscard]] Impatience {
public:
    explicit Impatience(std::shared_ptr<Database> database);
    ~Impatience();
    Impatience(const Impatience&) = delete;
    Impatience& operator=(const Impatience&) = delete;

private:
    std::shared_ptr<Database> m_database;
};

} // namespace tallyroom
