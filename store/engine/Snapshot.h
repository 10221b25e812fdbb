// A copy of a query's rows, which cannot be changed.
#pragma once

#include "store/engine/EngineRecordset.h"

namespace tallyroom {

class Snapshot final : public EngineRecordset {
public:
    using EngineRecordset::EngineRecordset;

protected:
    void readRows() override;
    int rowTotal() const override { return static_cast<int>(m_rows.size()); }
    const Row& rowAt(int position) const override;
    int findRow(const sql::Expression& criteria) override;

private:
    std::vector<Row> m_rows;
    std::unique_ptr<CopySearch> m_search; // made by the first search
};

} // namespace tallyroom
