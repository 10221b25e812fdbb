// Breaking off work that takes long, by Ctrl+C or by whoever ends the program.
#pragma once

namespace tallyroom::host::BreakOff {

// From now on such a signal is noted, so that the work can tidy up; a second one ends the program.
// A reader of the program's output who goes away no longer ends it.
void allow();

// Raises 18 when the work is to be broken off.
void check();

} // namespace tallyroom::host::BreakOff
