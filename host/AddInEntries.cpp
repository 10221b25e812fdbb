#include "host/AddInEntries.h"

#include <functional>

namespace tallyroom::host {

namespace {

void forEach(const ObjectRef& collection, const std::function<void(const ObjectRef&)>& take) {
    const int count = collection.property(QStringLiteral("Count")).toLong();
    for (int index = 1; index <= count; ++index)
        take(collection.property(QStringLiteral("Item"), {Variant(index)}).toObject());
}

AddInEntry readEntry(const ObjectRef& described) {
    AddInEntry entry;
    entry.callName = described.property(QStringLiteral("CallName")).toText();
    entry.caption = described.property(QStringLiteral("Caption")).toText();
    const Variant parameters = described.property(QStringLiteral("Parameters"));
    for (const Variant& kind : parameters.toArray().elements)
        entry.parameters.push_back(kind.toLong());
    return entry;
}

} // namespace

std::vector<AddInEntry> readEntries(const ObjectRef& descriptor) {
    std::vector<AddInEntry> entries;
    forEach(
        descriptor.property(QStringLiteral("Members")).toObject(), [&](const ObjectRef& member) {
            forEach(member.property(QStringLiteral("Implement")).toObject(),
                    [&](const ObjectRef& described) { entries.push_back(readEntry(described)); });
        });
    return entries;
}

} // namespace tallyroom::host
