// The tables of the three files under SQLite.
#pragma once

#include "store/engine/FileCompletion.h"

#include <QString>

namespace tallyroom {

// Creates the file, which is not there yet, with its tables and indexes. Raises 3051.
void createSqliteFile(const QString& path, const Schema::File& file);

// Adds to a file what it lacks, all or nothing, while nobody else uses it. Raises 3196 while
// somebody does, and 3051 for a file that cannot be written.
void completeSqliteFile(const QString& path, const FileCompletion& completion);

} // namespace tallyroom
