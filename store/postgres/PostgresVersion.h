// Whether a database has been prepared for this program.
#pragma once

#include "store/postgres/PostgresConnection.h"

namespace tallyroom {

// Raises 3343 when it has not been, or was by another version of the program.
void requireFunctions(PostgresConnection& connection);

} // namespace tallyroom
