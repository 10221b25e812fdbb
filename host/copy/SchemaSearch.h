// Finding a table or a column among those that the program knows.
#pragma once

#include "store/Schema.h"

#include <QString>
#include <algorithm>
#include <span>

namespace tallyroom::host {

// The entry of that name in any case, or null.
template<class Entry>
const Entry* findNamed(std::span<const Entry> entries, const QString& name) {
    const auto found = std::ranges::find_if(entries, [&](const Entry& entry) {
        return name.compare(QString::fromUtf16(entry.name), Qt::CaseInsensitive) == 0;
    });
    return found != entries.end() ? &*found : nullptr;
}

} // namespace tallyroom::host
