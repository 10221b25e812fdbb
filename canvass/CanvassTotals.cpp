#include "canvass/CanvassTotals.h"

#include "canvass/QuickBuild.h"
#include "canvass/TotalsBuild.h"

namespace tallyroom::CanvassTotals {

bool build(CanvassState& state, const ObjectRef& bucketForm, bool multiply,
           const ErrorQuestion& ask) {
    return QuickBuild::run(state, bucketForm, multiply) ||
           TotalsBuild(state, bucketForm, multiply, ask).run();
}

} // namespace tallyroom::CanvassTotals
