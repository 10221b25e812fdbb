#include "host/copy/CopySource.h"

#include <algorithm>

namespace tallyroom::host {

bool isScratch(const Schema::File& file, const QString& table) {
    return std::ranges::any_of(file.tables, [&](const Schema::Table& known) {
        return known.scratch &&
               table.compare(QString::fromUtf16(known.name), Qt::CaseInsensitive) == 0;
    });
}

} // namespace tallyroom::host
