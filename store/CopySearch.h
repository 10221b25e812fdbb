// Searching copied rows with the engine's own criteria.
#pragma once

#include "store/SqliteConnection.h"
#include "store/sql/Ast.h"
#include "store/sql/Bound.h"

namespace tallyroom {

// Holds the rows once more, in a database in memory whose row keys are their positions from 1.
class CopySearch {
public:
    CopySearch(const std::vector<sql::BoundColumn>& columns,
               const std::vector<std::vector<Variant>>& rows);

    // The position, from 0, of the first row for which the criteria hold, or −1.
    int find(const sql::Expression& criteria);

private:
    void createTable(const std::vector<sql::BoundColumn>& columns);
    void fill(const std::vector<std::vector<Variant>>& rows);
    void indexFor(const sql::BoundNode& condition);

    SqliteConnection m_connection;
    sql::BoundSelect m_select; // all rows, with the columns' output names
};

} // namespace tallyroom
