// The part of PostgresFunctions that converts between numbers, dates and texts.
#pragma once

#include <QStringList>

namespace tallyroom {

// What does not convert is Null and never an error: a query must not end at one bad row.
QStringList postgresConversions();

} // namespace tallyroom
