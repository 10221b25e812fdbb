#include "addin/Application.h"

#include <QFileInfo>
#include <dlfcn.h>

namespace tallyroom {

namespace {

// The file that this code was loaded from.
QString ownFile() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&applicationInfo), &info) == 0 || !info.dli_fname)
        return {};
    return QString::fromLocal8Bit(info.dli_fname);
}

ApplicationInfo readInfo() {
    const QFileInfo file(ownFile());
    ApplicationInfo info;
    info.file = file.absoluteFilePath();
    info.path = file.absolutePath();
    info.fileName = file.completeBaseName();
    info.title = QStringLiteral("Tallyroom");
    info.comments = QStringLiteral("Overtime canvassing board for Brightclock");
    info.major = TALLYROOM_VERSION_MAJOR;
    info.minor = TALLYROOM_VERSION_MINOR;
    info.revision = TALLYROOM_VERSION_PATCH;
    return info;
}

} // namespace

QString ApplicationInfo::version() const {
    return QStringLiteral("%1.%2.%3").arg(major).arg(minor).arg(revision);
}

const ApplicationInfo& applicationInfo() {
    static const ApplicationInfo info = readInfo();
    return info;
}

ApplicationObject::ApplicationObject() {
    const ApplicationInfo& info = applicationInfo();
    const auto add = [this](const QString& name, const Variant& value) {
        addProperty(name, [value](const Arguments&) { return value; });
    };
    add(QStringLiteral("Path"), Variant(info.path));
    add(QStringLiteral("EXEName"), Variant(info.fileName));
    add(QStringLiteral("Title"), Variant(info.title));
    add(QStringLiteral("Comments"), Variant(info.comments));
    add(QStringLiteral("Major"), Variant(info.major));
    add(QStringLiteral("Minor"), Variant(info.minor));
    add(QStringLiteral("Revision"), Variant(info.revision));
}

} // namespace tallyroom
