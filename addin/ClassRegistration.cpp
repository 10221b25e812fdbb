#include "addin/ClassRegistration.h"

#include <QUuid>

namespace tallyroom::ClassRegistration {

namespace {

const QString classesKey = QStringLiteral("Software\\Classes\\");

QString nameKey(const CreatableClass& entry) {
    return classesKey + QStringLiteral("Tallyroom.") + QString::fromUtf16(entry.name);
}

QString identifierKey(const CreatableClass& entry) {
    return classesKey + QStringLiteral("CLSID\\") + guidText(entry.id);
}

} // namespace

QString guidText(const Guid& guid) {
    const auto& d = guid.data4;
    return QUuid(guid.data1, guid.data2, guid.data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7])
        .toString()
        .toUpper();
}

bool add(Registry& registry, const ApplicationInfo& application) {
    for (const CreatableClass& entry : creatableClasses) {
        const bool added =
            registry.setValue(nameKey(entry) + QStringLiteral("\\CLSID"), {}, guidText(entry.id)) &&
            registry.setValue(identifierKey(entry) + QStringLiteral("\\InprocServer32"), {},
                              application.file);
        if (!added)
            return false;
    }
    return true;
}

bool remove(Registry& registry) {
    for (const CreatableClass& entry : creatableClasses) {
        for (const QString& key : {nameKey(entry), identifierKey(entry)}) {
            if (!registry.deleteKey(key) && !registry.isWritable())
                return false;
        }
    }
    return true;
}

} // namespace tallyroom::ClassRegistration
