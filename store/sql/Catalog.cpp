#include "store/sql/Catalog.h"

namespace tallyroom::sql {

int CatalogTable::indexOf(const QString& column) const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name.compare(column, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

} // namespace tallyroom::sql
