// Computing the board in memory and writing it at once: leaves what TotalsBuild leaves, sooner.
#pragma once

#include "canvass/CanvassState.h"

namespace tallyroom::QuickBuild {

// False as soon as anything hinders it, a file in use above all: no row has changed then, and
// TotalsBuild meets the hindrance in its turn.
[[nodiscard]] bool run(CanvassState& state, const ObjectRef& bucketForm, bool multiply);

} // namespace tallyroom::QuickBuild
