// What translated statements call and the server does not have, in a schema of the database's own.
#pragma once

#include <QStringList>

namespace tallyroom {

// Raised with every change of the statements. Table tallyroom.version tells a database's.
inline constexpr int functionsVersion = 1;

// Makes schema "tallyroom": functions, the collation tr_order, the domain yesno. To be run by the
// owner of the database, in one transaction; may be repeated. Takes a connection and a database of
// UTF-8.
//
// Nothing in it depends on search_path, on the locale of the database or on settings of a session,
// but for the dates without a year that tr_date reads. What SQL can express is bound when it is
// made and inlined where it is called; PL/pgSQL, which is read again by each session, either has a
// search_path of its own or names the schema of all it calls.
QStringList functionStatements();

} // namespace tallyroom
