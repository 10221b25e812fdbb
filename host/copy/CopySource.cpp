#include "host/copy/CopySource.h"

#include "host/copy/SchemaSearch.h"

namespace tallyroom::host {

bool isScratch(const Schema::File& file, const QString& table) {
    const Schema::Table* known = findNamed(file.tables, table);
    return known && known->scratch;
}

} // namespace tallyroom::host
