// The rows of a query, one of them current.
#pragma once

#include "common/Variant.h"

#include <QString>
#include <memory>

namespace tallyroom {

class Database;

// A dynaset over one table fixes its rows by key when it is opened and reads their values when a
// row becomes current; it can be edited. A snapshot, and a dynaset over totals, is a copy and
// cannot. Between two calls no engine statement is left half-read and no lock is held. Raises 3420
// after close(), 3021 without a current row, 3167 on a row that has gone, 3265 for unknown fields.
class Recordset {
public:
    virtual ~Recordset() = default;

    virtual bool bof() const = 0;
    virtual bool eof() const = 0;
    // Rows in the set; unlike the desktop engine's count it is complete from the start.
    virtual int rowCount() const = 0;

    virtual void moveFirst() = 0;
    virtual void moveLast() = 0;
    virtual void moveNext() = 0;
    virtual void movePrevious() = 0;

    virtual Variant field(const QString& name) const = 0; // name without regard to case
    virtual Variant field(int position) const = 0;        // counted from 0
    // For reading one field of many rows. Raises 3265.
    virtual int fieldPosition(const QString& name) const = 0;
    virtual int fieldCount() const = 0;
    virtual QString fieldName(int position) const = 0;

    // Editing: edit() or addNew(), then setField(), then update(). Moving discards the changes.
    // setField() raises 3421 for a value that does not convert, 3163 for a text that is too long.
    // A whole-number field takes a fraction rounded half to even. After addNew() and update() the
    // row that was current before stays current and the new one is the set's last.
    virtual void edit() = 0;
    virtual void addNew() = 0;
    virtual void setField(const QString& name, const Variant& value) = 0;
    virtual void setField(int position, const Variant& value) = 0;
    virtual void update() = 0;
    virtual void cancelUpdate() = 0;
    virtual void remove() = 0; // deletes the current row; no row is current until the next move

    // Moves to the first row of the set for which the criteria (the body of a Where clause) hold.
    // Without one noMatch() is true and there is no current row.
    virtual void findFirst(const QString& criteria) = 0;
    virtual bool noMatch() const = 0;

    // The sort (the body of an Order By clause) applies to the recordsets opened from this one by
    // openRecordset(), which runs the query anew. A bad sort raises there, not in setSort().
    virtual void setSort(const QString& sort) = 0;
    virtual std::shared_ptr<Recordset> openRecordset() = 0;

    virtual void requery() = 0; // runs the query again; the first row is current
    virtual void close() = 0;
    virtual std::shared_ptr<Database> database() const = 0;
};

} // namespace tallyroom
