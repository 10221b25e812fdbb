// Who is away on a day, and why.
#pragma once

#include "store/Database.h"

#include <QDate>
#include <QHash>
#include <QString>

namespace tallyroom {

// The reason in the host's words, by employee code, folded: see TextOrder. `filter` completes the
// condition
// "[thist_emp] ". An answer to an offer of overtime is recorded as an absence too; it is none.
// Raises what the database raises.
QHash<QString, QString> absencesOn(Database& host, const QString& filter, QDate day);

// The rows of a query of two columns, by the first one, folded.
QHash<QString, QString> readPairs(Database& database, const QString& statement);

} // namespace tallyroom
