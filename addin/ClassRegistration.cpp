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
    return registry.change([&](RegistryText& text) {
        for (const CreatableClass& entry : creatableClasses) {
            text.setValue(nameKey(entry) + QStringLiteral("\\CLSID"), {}, guidText(entry.id));
            text.setValue(identifierKey(entry) + QStringLiteral("\\InprocServer32"), {},
                          application.file);
        }
    });
}

bool remove(Registry& registry) {
    return registry.change([](RegistryText& text) {
        for (const CreatableClass& entry : creatableClasses) {
            text.deleteKey(nameKey(entry));
            text.deleteKey(identifierKey(entry));
        }
    });
}

} // namespace tallyroom::ClassRegistration
