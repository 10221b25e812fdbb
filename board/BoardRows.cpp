#include "board/BoardRows.h"

#include "board/BoardStatements.h"
#include "board/BoardTable.h"
#include "common/RunError.h"
#include "common/TextOrder.h"
#include "store/Recordset.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tallyroom::BoardRows {

namespace {

std::vector<BoardRow> rowsOf(Recordset& employees) {
    std::vector<BoardRow> rows;
    rows.reserve(static_cast<std::size_t>(employees.rowCount()));
    for (; !employees.eof(); employees.moveNext())
        rows.push_back(BoardTable::employeeRow(employees));
    return rows;
}

// Without a code before all others, as in any order of the database.
bool comesBefore(const BoardRow* left, const BoardRow* right) {
    if (left->code().isNull() || right->code().isNull())
        return left->code().isNull() && !right->code().isNull();
    return TextOrder::compare(left->code().toText(), right->code().toText()) < 0;
}

std::vector<BoardRow*> byCode(std::vector<BoardRow>& rows) {
    std::vector<BoardRow*> ordered;
    ordered.reserve(rows.size());
    for (BoardRow& row : rows)
        ordered.push_back(&row);
    if (!std::ranges::is_sorted(ordered, comesBefore)) // as they mostly come
        std::ranges::stable_sort(ordered, comesBefore);
    return ordered;
}

void takeTotals(BoardRow& row, const BoardTable::Totals& totals) {
    row.T15Hours = roundToLong(totals[1]);
    row.T20Hours = roundToLong(totals[2]);
    row.xT15Accepted = roundToLong(totals[3]);
    row.xT20Accepted = roundToLong(totals[4]);
    row.xT15Declined = roundToLong(totals[5]);
    row.xT20Declined = roundToLong(totals[6]);
    for (const BoardTable::MergedSum& sum : BoardTable::mergedSums())
        roundToLong(sum.of(totals)); // not kept, as it is derived anew; but it must be one
}

void merge(const std::vector<BoardRow*>& rows, Recordset& totals) {
    for (BoardRow* row : rows) {
        if (totals.eof())
            return;
        if (!row->code().sameValue(totals.field(0)))
            continue;
        takeTotals(*row, BoardTable::totals(totals));
        totals.moveNext();
    }
}

// Rounded half to even; beyond 32 bits there is no figure.
Minutes rounded(double minutes) {
    const double whole = std::nearbyint(minutes);
    using Limits = std::numeric_limits<std::int32_t>;
    if (whole < Limits::min() || whole > Limits::max())
        return std::nullopt;
    return static_cast<std::int32_t>(whole);
}

Minutes weighed(Minutes minutes, double rate) {
    return minutes ? rounded(*minutes * rate) : std::nullopt;
}

// Nothing when either is missing.
Minutes sum(Minutes left, Minutes right) {
    return left && right ? rounded(static_cast<double>(*left) + *right) : std::nullopt;
}

// What is missing counts as zero.
Minutes total(std::initializer_list<Minutes> parts) {
    double whole = 0;
    for (const Minutes& part : parts)
        whole += part.value_or(0);
    return rounded(whole);
}

void derive(BoardRow& row, bool multiply) {
    const double rate15 = multiply ? 1.5 : 1;
    const double rate20 = multiply ? 2 : 1;
    row.T15Hours_Mult = weighed(row.T15Hours, 1.5);
    row.T20Hours_Mult = weighed(row.T20Hours, 2);
    row.T15Accepted = weighed(row.xT15Accepted, rate15);
    row.T20Accepted = weighed(row.xT20Accepted, rate20);
    row.T15Declined = weighed(row.xT15Declined, rate15);
    row.T20Declined = weighed(row.xT20Declined, rate20);
    row.WorkedOT =
        multiply ? sum(row.T15Hours_Mult, row.T20Hours_Mult) : sum(row.T15Hours, row.T20Hours);
    row.AcceptedOT = total({row.T15Accepted, row.T20Accepted});
    row.DeclinedOT = total({row.T15Declined, row.T20Declined});
    row.TotalOT1 = total({row.WorkedOT, row.AcceptedOT, row.DeclinedOT});
    row.TotalOT2 = total({row.WorkedOT, row.DeclinedOT});
}

} // namespace

std::vector<BoardRow> read(Database& host, const Filter& filter,
                           const std::optional<TotallingPeriod>& period, bool multiply) {
    const QString employees = BoardStatements::employees(filter()) + QLatin1Char(';');
    const QString totals = BoardStatements::totals(filter(), period);
    const auto opened = host.openSnapshots({employees, totals});
    std::vector<BoardRow> rows = rowsOf(*opened[0]);
    merge(byCode(rows), *opened[1]);
    for (BoardRow& row : rows)
        derive(row, multiply);
    return rows;
}

} // namespace tallyroom::BoardRows
