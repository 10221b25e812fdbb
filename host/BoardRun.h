// One run of the add-in's entry for a command line, without the host's own window.
#pragma once

#include "host/Options.h"

namespace tallyroom::host {

// Calls the entry, taking a picture of the board if one is wanted, and returns how to end: with
// failure, and a line on standard error, when the board was to come up and did not. Why it did not
// the add-in has shown itself. Raises what the host raises.
int runBoard(const Options& options);

} // namespace tallyroom::host
