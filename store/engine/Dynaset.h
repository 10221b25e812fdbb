// The rows of one table by their keys, in the order that they had when the set was opened.
#pragma once

#include "store/engine/EngineRecordset.h"

#include <QHash>
#include <optional>

namespace tallyroom {

class Dynaset final : public EngineRecordset {
public:
    using EngineRecordset::EngineRecordset;
    using EngineRecordset::setField;

    void edit() override;
    void addNew() override;
    void setField(int position, const Variant& value) override;
    void update() override;
    void cancelUpdate() override;
    void remove() override;

protected:
    void readRows() override;
    int rowTotal() const override { return static_cast<int>(m_keys.size()); }
    int removedTotal() const override { return m_removedTotal; }
    bool isRemoved(int position) const override;
    const Row& rowAt(int position) const override;
    const Row* pendingRow() const override { return m_pending ? &m_pending->row : nullptr; }
    void forgetRow() override;
    int findRow(const sql::Expression& criteria) override;

private:
    struct Pending {
        bool adding = false;
        Row row;
        std::vector<bool> changed;
    };

    const sql::CatalogTable& table() const { return *bound().source->table; }
    void beginChange(bool adding, Row row);
    QStringList changedColumns() const;
    Row changedValues() const;
    void insertRow();
    void updateRow();
    void appendKey(qint64 key);
    void indexKeys();
    int positionOf(qint64 key) const;

    std::unique_ptr<KeyedRows> m_table;
    std::vector<qint64> m_keys;
    std::vector<bool> m_removed; // by position, as m_keys
    int m_removedTotal = 0;
    QHash<qint64, int> m_positions; // by key; filled by the first search
    mutable Row m_row;              // values of the current row, once asked for
    mutable bool m_rowRead = false;
    std::optional<Pending> m_pending;
};

} // namespace tallyroom
