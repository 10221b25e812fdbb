// Searching copied rows with the engine's own criteria, whatever engine they came from.
#pragma once

#include "store/engine/CopySearch.h"
#include "store/sqlite/SqliteConnection.h"

namespace tallyroom {

// Holds the rows once more, in a database in memory whose row keys are their positions from 1.
class SqliteCopySearch final : public CopySearch {
public:
    SqliteCopySearch(const std::vector<sql::BoundColumn>& columns, const std::vector<Row>& rows);

    int find(const sql::Expression& criteria) override;

private:
    void createTable(const std::vector<sql::BoundColumn>& columns);
    void fill(const std::vector<Row>& rows);
    void indexFor(const sql::BoundNode& condition);

    SqliteConnection m_connection;
    sql::BoundSelect m_select; // all rows, with the columns' output names
};

std::unique_ptr<CopySearch> makeSqliteCopySearch(const std::vector<sql::BoundColumn>& columns,
                                                 const std::vector<Row>& rows);

} // namespace tallyroom
