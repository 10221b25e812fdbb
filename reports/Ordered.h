// Rows of the board in the order of a stored ordering.
#pragma once

#include "board/BoardRows.h"

namespace tallyroom {

// Raises what the database raises; throws BadRequest for a description that no ordering has, and
// for one that sorts by something that the board does not have.
void sortBy(std::vector<BoardRow>& rows, const QString& dataFolder, const QString& description);

} // namespace tallyroom
