// Statements made by chance: the same ones for a seed.
#pragma once

#include "store/Database.h"
#include "tests/store/ExpressionMaker.h"

namespace tallyroom {

struct MadeQuery {
    QString sql;
    int keys = 0;         // columns, the first ones, that the rows are ordered by
    bool isTable = false; // its rows are those of a table, in their order
};

class StatementMaker : public ExpressionMaker {
public:
    using ExpressionMaker::ExpressionMaker;

    std::vector<Row> rows(const MadeTable& table);
    MadeQuery query();
    QString change();

private:
    MadeQuery plain();
    MadeQuery distinct();
    MadeQuery grouped();
    QString from();
};

} // namespace tallyroom
