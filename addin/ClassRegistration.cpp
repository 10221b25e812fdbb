#include "addin/ClassRegistration.h"

#include <QUuid>

namespace tallyroom::ClassRegistration {

namespace {

struct RegisteredClass {
    const char16_t* name;
    const Guid& id;
};

constexpr RegisteredClass classes[] = {{u"TLYR", classTLYR},
                                       {u"a_BCAddInDescriptor", classAddInDescriptor},
                                       {u"MemberInfo", classMemberInfo}};

const QString classesKey = QStringLiteral("Software\\Classes\\");

QString nameKey(const RegisteredClass& entry) {
    return classesKey + QStringLiteral("Tallyroom.") + QString::fromUtf16(entry.name);
}

QString identifierKey(const RegisteredClass& entry) {
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
    for (const RegisteredClass& entry : classes) {
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
    for (const RegisteredClass& entry : classes) {
        for (const QString& key : {nameKey(entry), identifierKey(entry)}) {
            if (!registry.deleteKey(key) && !registry.isWritable())
                return false;
        }
    }
    return true;
}

} // namespace tallyroom::ClassRegistration
