// A connection to one database file.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

namespace tallyroom {

class Recordset;

// See Database::changeMark(). Marks of different connections do not compare.
struct ChangeMark {
    qint64 byOthers = 0;
    qint64 byUs = 0;
    qint64 undone = 0;
    friend bool operator==(const ChangeMark&, const ChangeMark&) = default;
};

enum class RecordsetType { Dynaset, Snapshot };

// Statements are written in the desktop engine's SQL; the store translates them. Errors are
// RunErrors with that engine's numbers, texts and sources. A connection closes with its last
// owner; recordsets are owners.
class Database : public std::enable_shared_from_this<Database> {
public:
    virtual ~Database() = default;

    // Runs one Delete, Insert, Update or Drop statement. Rows that cannot be written (a duplicate
    // key, a required value missing) are skipped and the others written; a statement that cannot
    // be understood, an unknown name or an unavailable file raise.
    virtual void execute(const QString& sql) = 0;

    // Runs Update statements in one pass over the rows, if it can be told that this leaves what
    // they leave when they run in turn. Otherwise, and when anything fails, nothing is done and the
    // result is false: run them one by one, then, so that each fails in its turn. Raises only when
    // a disk that fails has undone the batch around it.
    virtual bool executeAsOne(const QStringList& updates) = 0;

    // Runs an Insert into another file after emptying the table that it names, as one write. When
    // anything fails, and inside a batch, nothing is done and the result is false: run a Delete
    // and the Insert one by one, then, so that each fails in its turn.
    virtual bool refill(const QString& insert) = 0;

    // Runs Update statements in turn, from the one at `done` on, which counts those that are done
    // even when one of them raises; all as one where possible.
    void executeAll(const QStringList& updates, qsizetype& done);

    // Opens the rows of a Select statement. The first row, if any, is current.
    virtual std::shared_ptr<Recordset> openRecordset(const QString& sql, RecordsetType type) = 0;

    // Groups the statements that follow into one write to the disk. Without a batch each statement
    // is durable when it returns. Batches do not nest: see Batch.
    virtual void beginBatch() = 0;
    virtual void commitBatch() = 0; // raises; the statements are then undone
    virtual void undoBatch() = 0;
    // No longer once a statement met a disk that fails, which undoes the whole batch.
    virtual bool inBatch() const = 0;

    // Between the two, rows are read as they stand at the first read, without a lock for each.
    // Others who want to write wait that long. Nothing may be written in between. Inside a batch,
    // or while it goes on already, the first does nothing and returns false; then leave out the
    // second.
    virtual bool beginReading() = 0;
    virtual void endReading() = 0;

    // Stays the same as long as nobody changes the file, through this connection or another one.
    virtual ChangeMark changeMark() = 0;

    // Calls back again and again during a statement that takes long, about every tenth of a second:
    // by the work that is done, not by the clock. The callback neither uses a database nor throws;
    // an empty one ends it.
    virtual void setProgress(std::function<void()> callback) = 0;

    // Whether the file that was opened is still the one at its path.
    virtual bool isInPlace() = 0;

    // Closes the file at once; later use of the connection or its recordsets raises 3420.
    virtual void close() = 0;
};

// Scope in which statements share one write. What was done before a failure stays done: leaving
// the scope by an exception commits as well. Inside another batch this one does nothing.
class Batch {
public:
    explicit Batch(std::shared_ptr<Database> database);
    ~Batch();
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    void commit(); // ends the scope early and reports what goes wrong

private:
    std::shared_ptr<Database> m_database; // null once the batch is over or was not ours
};

// Scope in which many rows are read at one state of the file: see beginReading().
class Reading {
public:
    explicit Reading(std::shared_ptr<Database> database);
    ~Reading();
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

private:
    std::shared_ptr<Database> m_database;
    bool m_began;
};

} // namespace tallyroom
