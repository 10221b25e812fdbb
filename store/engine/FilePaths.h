// Paths as the host writes them, and the files that they stand for.
#pragma once

#include <QString>

namespace tallyroom::FilePaths {

// The existing file that a path stands for: "\" and "/" both separate folders, and names are found
// without regard to case. Raises 3024 (no such file) or 3044 (no such folder).
QString resolveFile(const QString& path);

} // namespace tallyroom::FilePaths
