// Filling the board's grid.
#pragma once

#include "common/BoardColumns.h"
#include "common/ui/Grid.h"
#include "store/Recordset.h"

namespace tallyroom::CanvassFill {

// Leaves the heading, its columns as wide as their texts, and one empty row.
void begin(Grid& grid, TextMeasurer& measurer);

// Writes the heading of the shown columns and a row for each row of the recordset, and fits the
// columns to their texts; the empty row goes. Rows whose code cannot be read are left out: the code
// is what an answer goes by. Returns how many. An error ends the fill: what was written so far
// stays in the grid.
int fill(Grid& grid, TextMeasurer& measurer, Recordset& rows, const BoardOptions& options);

} // namespace tallyroom::CanvassFill
