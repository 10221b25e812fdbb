// Computing the board: each selected employee's overtime, into the scratch table tlyrTemp.
#pragma once

#include "canvass/CanvassState.h"

#include <functional>

namespace tallyroom {

enum class ErrorAnswer { Abort, Retry, Ignore };

// Asked when a statement of the build fails. No transaction is open while it waits.
using ErrorQuestion = std::function<ErrorAnswer(const RunError&)>;

namespace CanvassTotals {

// Empties and refills tlyrTemp for the employees of the host's selection and the state's period,
// and reopens CanvassRs over it. A failing statement is put to `ask`: Abort leaves, with whatever
// the finished statements did; Retry repeats the statement; Ignore goes on with the next. Error
// 3010 is answered once in a build by dropping the table of that name from aidb01.mdb and a retry.
// Returns false after an abort.
[[nodiscard]] bool build(CanvassState& state, const ObjectRef& bucketForm, bool multiply,
                         const ErrorQuestion& ask);

} // namespace CanvassTotals
} // namespace tallyroom
