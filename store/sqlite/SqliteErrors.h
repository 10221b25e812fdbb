// What the engine reports, as errors of the desktop engine.
#pragma once

#include "store/ErrorSource.h"

#include <SQLiteCpp/Exception.h>

namespace tallyroom {

// A scalar subquery found a second row; registered functions report with this text.
inline constexpr char moreThanOneRowMark[] = "tallyroom: more than one row";

// Whether an engine's result code means that a file fails, rather than a statement.
bool isFileError(int code);

// `file` is the database that was worked on.
RunError storeError(const SQLite::Exception& error, const QString& file);

} // namespace tallyroom
