// Filling the board's grid.
#pragma once

#include "common/BoardColumns.h"
#include "common/ui/GridFill.h"
#include "store/Recordset.h"

namespace tallyroom::CanvassFill {

// Writes the heading of the shown columns and a row for each row of the recordset, and fits the
// columns to their texts; the empty row goes. Rows whose code cannot be read are left out: the code
// is what an answer goes by. Returns how many. After an error the fill holds what came before it.
[[nodiscard]] int fill(GridFill& grid, TextWidths& measurer, Recordset& rows,
                       const BoardOptions& options);

} // namespace tallyroom::CanvassFill
