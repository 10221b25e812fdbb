#include "addin/Component.h"

#include "addin/TLYR.h"
#include "common/CoreFunctions.h"
#include "common/RunError.h"

#include <QApplication>
#include <mutex>
#include <new>

namespace tallyroom::Component {

namespace {

HostContext hostContext;
int locks = 0;
int factories = 0;
bool madeApplication = false;

class ClassFactory final : public IClassFactory {
public:
    ClassFactory() { ++factories; }
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    std::uint32_t addRef() noexcept override { return ++m_references; }

    std::uint32_t release() noexcept override {
        const std::uint32_t left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

    Status createInstance(IObject** object) noexcept override {
        if (!object)
            return statusPointer;
        *object = nullptr;
        try {
            *object = new TLYR(hostContext);
            (*object)->addRef();
            return statusOk;
        } catch (const std::bad_alloc&) {
            return statusOutOfMemory;
        } catch (const std::exception&) {
            return statusFail;
        }
    }

    Status lockServer(bool lock) noexcept override {
        if (!lock && locks == 0)
            return statusFail;
        locks += lock ? 1 : -1;
        return statusOk;
    }

private:
    ~ClassFactory() { --factories; }

    std::uint32_t m_references = 1;
};

bool hasDisplay() {
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

void makeApplication() {
    static int argumentCount = 1;
    static char name[] = "tallyroom";
    static char* arguments[] = {name, nullptr};
    new QApplication(argumentCount, arguments); // lives as long as the process
    madeApplication = true;
}

} // namespace

void startUpOnce() {
    static std::once_flag started;
    std::call_once(started, [] {
        CoreFunctions::InitializeCF();
        // The installation record is written here.
    });
}

IClassFactory* classFactory(const Guid& classId) {
    return classId == classTLYR ? new ClassFactory : nullptr;
}

bool canUnload() {
    return locks == 0 && factories == 0 && LateBoundObject::aliveCount() == 0 && !madeApplication;
}

void requireDisplay() {
    if (qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    if (QCoreApplication::instance() || !hasDisplay())
        throw RunError::make(ErrorNumber::cannotCreateObject,
                             {QStringLiteral("there is no display.")});
    makeApplication();
}

} // namespace tallyroom::Component
