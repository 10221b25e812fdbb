#include "host/AddInModule.h"

#include "common/RunError.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <dlfcn.h>

namespace tallyroom::host {

namespace {

RunError cannotLoad(const QString& reason) {
    return {ErrorNumber::cannotCreateObject,
            QStringLiteral("The add-in could not be loaded: ") + reason,
            QStringLiteral("Brightclock")};
}

RunError cannotCreate(Status status) {
    return cannotLoad(QStringLiteral("it refused to make an object (%1).")
                          .arg(static_cast<quint32>(status), 8, 16, QLatin1Char('0')));
}

QString loaderMessage() {
    return QString::fromLocal8Bit(dlerror());
}

// Whether the file can be loaded and exports what an add-in exports.
bool isAddIn(const QString& file) {
    void* handle = dlopen(QFile::encodeName(file).constData(), RTLD_LAZY | RTLD_LOCAL);
    if (!handle)
        return false;
    const bool hasFactory = dlsym(handle, "DllGetClassObject") != nullptr;
    dlclose(handle);
    return hasFactory;
}

} // namespace

QString findModule(const QString& given) {
    if (!given.isEmpty()) {
        if (QFileInfo(given).isFile())
            return QFileInfo(given).absoluteFilePath();
        throw cannotLoad(QStringLiteral("there is no file ") + QFileInfo(given).absoluteFilePath());
    }
    const QDir program(QCoreApplication::applicationDirPath());
    const QStringList folders{
        program.path(), QDir::cleanPath(program.filePath(QStringLiteral(TALLYROOM_MODULE_FOLDER)))};
    for (const QString& folder : folders) {
        for (const QFileInfo& file :
             QDir(folder).entryInfoList({QStringLiteral("*.so")}, QDir::Files, QDir::Name)) {
            if (isAddIn(file.absoluteFilePath()))
                return file.absoluteFilePath();
        }
    }
    throw cannotLoad(QStringLiteral("there is none in ") + folders.join(QStringLiteral(" or ")));
}

AddInModule::AddInModule(const QString& file)
    : m_handle(dlopen(QFile::encodeName(file).constData(), RTLD_NOW | RTLD_LOCAL)) {
    if (!m_handle)
        throw cannotLoad(loaderMessage());
    try {
        m_getClassObject =
            reinterpret_cast<DllGetClassObjectFunction*>(exported("DllGetClassObject"));
        m_canUnloadNow = reinterpret_cast<DllCanUnloadNowFunction*>(exported("DllCanUnloadNow"));
    } catch (const RunError&) {
        dlclose(m_handle);
        throw;
    }
}

AddInModule::~AddInModule() {
    // Windows of the module that wait for their deletion must go while their code is there.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (m_canUnloadNow() == statusOk)
        dlclose(m_handle);
}

void* AddInModule::exported(const char* name) const {
    void* symbol = dlsym(m_handle, name);
    if (!symbol)
        throw cannotLoad(loaderMessage());
    return symbol;
}

ObjectRef AddInModule::createObject(const Guid& classId) const {
    void* made = nullptr;
    Status status = m_getClassObject(&classId, &interfaceClassFactory, &made);
    if (status != statusOk)
        throw cannotCreate(status);
    const auto factory = Counted<IClassFactory>::adopt(static_cast<IClassFactory*>(made));
    IObject* object = nullptr;
    status = factory->createInstance(&object);
    if (status != statusOk)
        throw cannotCreate(status);
    return ObjectRef(Counted<IObject>::adopt(object));
}

} // namespace tallyroom::host
