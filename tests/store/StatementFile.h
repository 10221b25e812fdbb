// Files of statements with what they must give. A line is one of
//   # a comment
//   in FILE                  the database that the lines below speak to
//   run STATEMENT            executes it
//   ask STATEMENT            opens it as a dynaset; lines that begin with "=" are its rows, in
//   order copy STATEMENT           likewise as a snapshot fail NUMBER run|ask|copy STATEMENT must
//   raise that error
// "{folder}" in a statement stands for the data folder as the host writes it.
#pragma once

#include <QString>

namespace tallyroom {

// Runs the file against fresh data files and reports each line that does otherwise.
void runStatementFile(const QString& path);

} // namespace tallyroom
