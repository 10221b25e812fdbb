// What the first page of a file says of how it may be read.
#pragma once

#include "host/oldfiles/reader/MdbLibrary.h"

namespace tallyroom::host {

// Looks at the first page, which the library has just read. Throws OldFileRefused for a version
// that is not known, an encrypted file, and one with a password.
void requireReadable(MdbHandle& mdb);

} // namespace tallyroom::host
