// Breaking off work that takes long, by Ctrl+C or by whoever ends the program.
#pragma once

namespace tallyroom::host::BreakOff {

// From now on such a signal is noted, so that the work can tidy up; a second one ends the program.
void allow();

// Raises 18 when the work is to be broken off.
void check();

} // namespace tallyroom::host::BreakOff
