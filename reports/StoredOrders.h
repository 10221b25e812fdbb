// The orders that a report may be asked for in.
#pragma once

#include <QStringList>

namespace tallyroom {

// Descriptions of the stored orderings, sorted. Raises what the database raises.
QStringList storedOrders(const QString& dataFolder);

} // namespace tallyroom
