// The order of the board as a stored ordering asks for it.
#pragma once

#include "board/BoardRows.h"
#include "common/BoardColumns.h"

#include <functional>

namespace tallyroom {

// The Order By list that an ordering's settings text asks for, "[sendate] asc, [emp_name] desc";
// empty when no element takes part. `unknownElement` is called for an element that the board does
// not know; it leaves its direction without a column, which the database then rejects. Raises 13
// for a state that is no truth value or a direction that is no number.
QString sortExpression(const QString& stored, const BoardOptions& options,
                       const std::function<void()>& unknownElement);

// Sorts rows likewise; those that are alike stay as they are. False, and nothing is sorted, for an
// ordering with an element that the board does not know. Raises the same.
[[nodiscard]] bool sortRows(std::vector<BoardRow>& rows, const QString& stored,
                            const BoardOptions& options);

} // namespace tallyroom
