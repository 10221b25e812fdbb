// What recordsets have in common: position, fields, and running the query anew.
#pragma once

#include "store/ErrorSource.h"
#include "store/Recordset.h"
#include "store/engine/EngineDatabase.h"

namespace tallyroom {

class EngineRecordset : public Recordset {
public:
    EngineRecordset(std::shared_ptr<EngineDatabase> database, RecordsetQuery query,
                    sql::BoundSelect bound);

    // Runs the query; the first row is current. Called once on a new recordset.
    void start();

    bool bof() const override;
    bool eof() const override;
    int rowCount() const override;

    void moveFirst() override;
    void moveLast() override;
    void moveNext() override;
    void movePrevious() override;

    Variant field(const QString& name) const override;
    Variant field(int position) const override;
    int fieldPosition(const QString& name) const override;
    int fieldCount() const override;
    QString fieldName(int position) const override;

    // A copy refuses all changes; a dynaset overrides them.
    void edit() override;
    void addNew() override;
    void setField(const QString& name, const Variant& value) override;
    void setField(int position, const Variant& value) override;
    void update() override;
    void cancelUpdate() override;
    void remove() override;

    void findFirst(const QString& criteria) override;
    bool noMatch() const override;
    void setSort(const QString& sort) override;
    std::shared_ptr<Recordset> openRecordset() override;
    void requery() override;
    void close() override;
    std::shared_ptr<Database> database() const override;

protected:
    virtual void readRows() = 0;      // runs the bound query
    virtual int rowTotal() const = 0; // positions, those of removed rows included
    virtual int removedTotal() const { return 0; }
    virtual bool isRemoved(int) const { return false; }
    virtual const Row& rowAt(int position) const = 0;
    virtual const Row* pendingRow() const { return nullptr; } // of an edit or an addition
    virtual void forgetRow() {}                               // and the changes to it
    // The position of the first row for which the criteria hold, or −1.
    virtual int findRow(const sql::Expression& criteria) = 0;

    void requireOpen() const;
    void requireRow() const; // raises 3021 or 3167
    void requireField(int position) const;

    EngineDatabase& engine() const { return *m_database; }
    const sql::BoundSelect& bound() const { return m_bound; }
    int position() const { return m_position; }
    void leaveRow() { m_onRow = false; }
    void leaveToEnd();

private:
    void moveTo(int position, int step);

    std::shared_ptr<EngineDatabase> m_database;
    RecordsetQuery m_query;
    sql::BoundSelect m_bound;
    QString m_sort;
    int m_position = 0; // −1 before the first row, rowTotal() after the last
    bool m_onRow = false;
    bool m_noMatch = false;
    bool m_closed = false;
};

// An error that came up below a recordset's method, as one of the recordset.
RunError recordsetError(const RunError& error);

// Runs an action of a recordset; errors of the engine come from the recordset then.
template<class Action>
decltype(auto) asRecordset(Action action) {
    try {
        return action();
    } catch (const RunError& error) {
        throw recordsetError(error);
    }
}

} // namespace tallyroom
