// The tables of the three files under SQLite.
#pragma once

#include "store/Schema.h"

#include <QString>

namespace tallyroom {

// Creates the file, which is not there yet, with its tables and indexes. Raises 3051.
void createSqliteFile(const QString& path, const Schema::File& file);

} // namespace tallyroom
