#include "host/AddInModule.h"

#include "common/RunError.h"
#include "host/Places.h"

#include <QCoreApplication>
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

} // namespace

// Looking into a file by loading it would run what it brings, so its name alone decides.
QString findModule(const QString& given) {
    const QFileInfo file(given.isEmpty() ? Places::module() : given);
    if (!file.isFile())
        throw cannotLoad(QStringLiteral("there is no file ") + file.absoluteFilePath());
    return file.absoluteFilePath();
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
