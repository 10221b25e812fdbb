// Searching copied rows with the desktop engine's criteria.
#pragma once

#include "store/Database.h"
#include "store/sql/Ast.h"
#include "store/sql/Bound.h"

namespace tallyroom {

class CopySearch {
public:
    virtual ~CopySearch() = default;

    // The position, from 0, of the first row for which the criteria hold, or −1.
    virtual int find(const sql::Expression& criteria) = 0;
};

// Neither the columns nor the rows are needed afterwards.
using CopySearchMaker = std::unique_ptr<CopySearch> (*)(
    const std::vector<sql::BoundColumn>& columns, const std::vector<Row>& rows);

} // namespace tallyroom
