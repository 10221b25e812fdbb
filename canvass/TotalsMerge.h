// Merging the totals of the history into the board's rows.
#pragma once

#include "canvass/BuildSteps.h"
#include "store/Recordset.h"

#include <array>

namespace tallyroom {

// A one-sided merge: the totals advance only on a match, so totals of somebody who is not on the
// board keep all later employees from theirs. That is how the board has always counted.
class TotalsMerge {
public:
    // `steps` must outlive this; `updates` will run on the rows after the merge.
    TotalsMerge(BuildSteps& steps, std::shared_ptr<Database> board, QStringList updates)
        : m_steps(steps), m_board(std::move(board)), m_updates(std::move(updates)) {}

    // The current totals are the first. True when every row has taken totals and has in it what
    // the updates set already.
    bool run(Recordset& totals);

private:
    static constexpr int rawColumns = 6;
    // The totals that are copied as they are, by their positions in both queries, from 1 on.
    using RawTotals = std::array<Variant, rawColumns + 1>;

    void openRows();
    int mergeRows(Recordset& totals);
    bool takeTotals(Recordset& totals);
    void setTotals(const RawTotals& raw);
    static RawTotals rawTotals(const Recordset& totals);

    BuildSteps& m_steps;
    std::shared_ptr<Database> m_board; // null when it could not be opened
    QStringList m_updates;
    std::shared_ptr<Recordset> m_rows; // likewise
};

} // namespace tallyroom
