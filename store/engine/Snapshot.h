// A copy of a query's rows, which cannot be changed.
#pragma once

#include "store/engine/EngineRecordset.h"

namespace tallyroom {

class Snapshot final : public EngineRecordset {
public:
    using EngineRecordset::EngineRecordset;

    // As start(), with rows that have been read already.
    void startWith(std::vector<Row> rows);

protected:
    void readRows() override;
    int rowTotal() const override { return static_cast<int>(m_rows.size()); }
    const Row& rowAt(int position) const override;
    int findRow(const sql::Expression& criteria) override;

private:
    std::vector<Row> m_rows;
    bool m_isRead = false;                // what m_rows are to be
    std::unique_ptr<CopySearch> m_search; // made by the first search
};

} // namespace tallyroom
