// Keys and clicks that came while a long command ran.
#pragma once

namespace tallyroom::PendingInput {

// Drops what the user has pressed, clicked or closed up to now: it was meant for what the screen
// showed then, and an impatient second click would act on what it shows now. Timers are put off.
void drop();

} // namespace tallyroom::PendingInput
