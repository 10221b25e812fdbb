#include "reports/Ordered.h"

#include "board/SortExpression.h"
#include "ordering/Orderings.h"
#include "reports/ReportRequest.h"

namespace tallyroom {

void sortBy(std::vector<BoardRow>& rows, const QString& dataFolder, const QString& description) {
    // No statement can look for one with an apostrophe.
    const bool isSought = !description.contains(QLatin1Char('\''));
    const auto ordering = isSought ? Orderings::read(dataFolder, description) : std::nullopt;
    if (!ordering)
        throw BadRequest{QStringLiteral("There is no ordering \"%1\".").arg(description)};
    if (!sortRows(rows, ordering->details, {}))
        throw BadRequest{QStringLiteral("The ordering \"%1\" sorts by something that the board "
                                        "does not have.")
                             .arg(description)};
}

} // namespace tallyroom
