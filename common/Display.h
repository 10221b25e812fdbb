// Whether windows can be shown at all. The toolkit ends the process when they cannot, which a host
// must never suffer, so it is asked before the toolkit is started.
#pragma once

namespace tallyroom {

// True when the environment names a platform of the toolkit or a compositor, or an X display that
// answers. The first two are believed.
bool hasDisplay();

} // namespace tallyroom
