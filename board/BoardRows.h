// The rows of the board, computed from the host's tables alone: who is on it, with what totals.
#pragma once

#include "setup/TotallingPeriod.h"
#include "store/Database.h"

#include <functional>
#include <optional>

namespace tallyroom {

// Whole minutes; nothing where there is no figure, which differs from zero.
using Minutes = std::optional<std::int32_t>;

// One employee. The names of the figures are those of the columns of tlyrTemp.
struct BoardRow {
    Row employee; // as BoardTable::employeeColumns() says
    const Variant& code() const { return employee.front(); }

    // The totals of the history; nothing for who has none in the period.
    Minutes T15Hours;
    Minutes T20Hours;
    Minutes xT15Accepted;
    Minutes xT20Accepted;
    Minutes xT15Declined;
    Minutes xT20Declined;

    // What follows from them.
    Minutes T15Hours_Mult; // always weighed by the rate
    Minutes T20Hours_Mult;
    Minutes T15Accepted; // weighed if asked for, as all that follow
    Minutes T20Accepted;
    Minutes T15Declined;
    Minutes T20Declined;
    Minutes WorkedOT; // nothing for who has no hours
    Minutes AcceptedOT;
    Minutes DeclinedOT;
    Minutes TotalOT1; // worked, accepted and declined
    Minutes TotalOT2; // worked and declined
};

namespace BoardRows {

// What the host's selection says at the moment; called once for each of the two queries.
using Filter = std::function<QString()>;

// The rows in the order in which the host keeps its employees. `multiply` weighs each hour by its
// rate. The totals are merged one-sidedly, by code: they advance only on an exact match, so totals
// of somebody who is not on the board keep all later employees from theirs. That is how the board
// has always counted.
//
// Raises what the database raises, 6 for totals beyond 32 bits, and 3421 for a value that its
// column of tlyrTemp does not keep as it is.
std::vector<BoardRow> read(Database& host, const Filter& filter,
                           const std::optional<TotallingPeriod>& period, bool multiply);

} // namespace BoardRows
} // namespace tallyroom
