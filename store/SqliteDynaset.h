// The rows of one table by their keys, in the order that they had when the set was opened.
#pragma once

#include "store/SqliteRecordset.h"

#include <optional>

namespace tallyroom {

class SqliteDynaset final : public SqliteRecordset {
public:
    using SqliteRecordset::setField;
    using SqliteRecordset::SqliteRecordset;

    void edit() override;
    void addNew() override;
    void setField(int position, const Variant& value) override;
    void update() override;
    void cancelUpdate() override;
    void expectUpdates(const QStringList& updates) override;
    bool hasLeftExpected() const override { return !m_expected.empty(); }
    void remove() override;

protected:
    void readRows() override;
    int rowTotal() const override { return static_cast<int>(m_keys.size()); }
    int removedTotal() const override { return m_removedTotal; }
    bool isRemoved(int position) const override;
    const Row& rowAt(int position) const override;
    Variant valueAt(int position, std::size_t column) const override;
    const Row* pendingRow() const override;
    void forgetRow() override;
    int findRow(const sql::Expression& criteria) override;

private:
    struct Pending {
        bool adding = false;
        bool complete = false; // the row has its unchanged values too
        Row row;
        std::vector<bool> changed;
    };

    const sql::CatalogTable& table() const { return *bound().source->table; }
    void beginChange(bool adding);
    void find(SqliteQuery& query, int position) const;
    QStringList changedColumns() const;
    std::vector<sql::BoundAssignment> changesAsParameters() const;
    void bindChanges(SqliteQuery& query) const;
    void insertRow();
    void updateRow();
    QString updateText(int keyParameter);
    void appendKey(qint64 key);
    void indexKeys();
    int positionOf(qint64 key) const;
    int changedRows() const;

    bool isGuarded() const;

    std::vector<qint64> m_keys;
    int m_keysBatch = 0;         // in which they were read
    std::vector<bool> m_removed; // by position, as m_keys
    int m_removedTotal = 0;
    QHash<qint64, int> m_positions; // by key; filled by the first search
    QString m_rowText;              // the statement that reads one row
    QString m_updateText;           // the one that writes the columns of m_updated
    std::vector<bool> m_updated;
    std::vector<sql::BoundUpdate> m_expected; // none once an edit was made without them
    mutable Row m_row;                        // values of the current row, once asked for
    mutable bool m_rowRead = false;
    // The first value that was asked for, while it is the only one.
    struct FirstValue {
        std::size_t column = 0;
        Variant value;
    };
    mutable std::optional<FirstValue> m_first;
    mutable QString m_firstText; // the statement that reads the column of m_firstColumn
    mutable std::size_t m_firstColumn = 0;
    mutable std::optional<Pending> m_pending;
};

} // namespace tallyroom
