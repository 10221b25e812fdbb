// What a user of the add-in would have set up: associations, a period, orderings.
#pragma once

#include "host/demo/DemoSettings.h"

namespace tallyroom {
class Database;
}

namespace tallyroom::host {

// Writes the four absent codes, a period of the last two weeks, and a few orderings.
void loadSetup(Database& database, const DemoSettings& settings);

} // namespace tallyroom::host
