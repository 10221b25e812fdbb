#include "host/AddInEntries.h"

#include <functional>

namespace tallyroom::host {

namespace {

void forEach(const ObjectRef& collection, const std::function<void(const ObjectRef&)>& take) {
    const int count = collection.property(QStringLiteral("Count")).toLong();
    for (int index = 1; index <= count; ++index)
        take(collection.property(QStringLiteral("Item"), {Variant(index)}).toObject());
}

AddInEntry readEntry(const QString& member, const ObjectRef& described) {
    AddInEntry entry;
    entry.member = member;
    entry.callName = described.property(QStringLiteral("CallName")).toText();
    entry.caption = described.property(QStringLiteral("Caption")).toText();
    entry.securityTag = described.property(QStringLiteral("SecurityTag")).toText();
    entry.type = described.property(QStringLiteral("ImpType")).toLong();
    entry.location = described.property(QStringLiteral("Location")).toLong();
    const Variant parameters = described.property(QStringLiteral("Parameters"));
    for (const Variant& kind : parameters.toArray().elements)
        entry.parameters.push_back(kind.toLong());
    return entry;
}

} // namespace

std::vector<AddInEntry> readEntries(const ObjectRef& descriptor) {
    std::vector<AddInEntry> entries;
    forEach(descriptor.property(QStringLiteral("Members")).toObject(),
            [&](const ObjectRef& member) {
                const QString name = member.property(QStringLiteral("Name")).toText();
                forEach(member.property(QStringLiteral("Implement")).toObject(),
                        [&](const ObjectRef& described) {
                            entries.push_back(readEntry(name, described));
                        });
            });
    return entries;
}

} // namespace tallyroom::host
