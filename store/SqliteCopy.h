// A copy of a query's rows, which cannot be changed.
#pragma once

#include "store/CopySearch.h"
#include "store/SqliteRecordset.h"

namespace tallyroom {

class SqliteCopy final : public SqliteRecordset {
public:
    using SqliteRecordset::SqliteRecordset;

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
