// The tables of a site's files on a server.
#pragma once

#include "store/engine/FileCompletion.h"

#include <QStringList>

namespace tallyroom {

// Statements that make a file's schema with its tables and indexes; those of the board's own tables
// are left out.
QStringList createSchemaStatements(const QString& schema, const Schema::File& file);

// Statements that add to a file's schema what it lacks. Whoever may work on the audit may work on
// what is added beside it.
QStringList completeSchemaStatements(const QString& schema, const FileCompletion& completion);

// Whether the file of that schema has tables that belong to a board as long as its session lasts.
bool hasOwnTables(const QString& schema);
// Statements that make those of all files.
QStringList createOwnTableStatements();

} // namespace tallyroom
