// From a user-defined ordering to the sort of the board.
#pragma once

#include "common/BoardColumns.h"

#include <QString>
#include <functional>

namespace tallyroom {

// The Order By list that an ordering's settings text asks for, "[sendate] asc, [emp_name] desc";
// empty when no element takes part. `unknownElement` is called for an element that the board does
// not know; it leaves its direction without a column, which the database then rejects. Raises 13
// for a state that is no truth value or a direction that is no number.
QString sortExpression(const QString& stored, const BoardOptions& options,
                       const std::function<void()>& unknownElement);

} // namespace tallyroom
