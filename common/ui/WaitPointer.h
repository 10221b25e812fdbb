// The hourglass pointer of long commands.
#pragma once

namespace tallyroom::WaitPointer {

void show(); // stays until hide(), however often it is shown
void hide(); // back to the default pointer; harmless when that is up

} // namespace tallyroom::WaitPointer
