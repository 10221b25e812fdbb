#include "reports/StoredOrders.h"

#include "ordering/Orderings.h"

namespace tallyroom {

QStringList storedOrders(const QString& dataFolder) {
    QStringList descriptions;
    for (const Ordering& ordering : Orderings::readAll(dataFolder).orderings)
        descriptions << ordering.descr;
    return descriptions;
}

} // namespace tallyroom
