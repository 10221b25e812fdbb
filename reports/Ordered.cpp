#include "reports/Ordered.h"

#include "board/SortExpression.h"
#include "ordering/Orderings.h"
#include "reports/ReportRequest.h"

namespace tallyroom {

void sortBy(std::vector<BoardRow>& rows, const QString& dataFolder, const QString& description) {
    const auto ordering = Orderings::read(dataFolder, description);
    if (!ordering)
        throw BadRequest{QStringLiteral("There is no ordering \"%1\".").arg(description)};
    if (!sortRows(rows, ordering->details, {}))
        throw BadRequest{QStringLiteral("The ordering \"%1\" sorts by something that the board "
                                        "does not have.")
                             .arg(description)};
}

} // namespace tallyroom
