#include "addin/Component.h"

#include "addin/Application.h"
#include "addin/ClassRegistration.h"
#include "addin/Descriptor.h"
#include "addin/InstallationRecord.h"
#include "addin/MemberInfo.h"
#include "addin/TLYR.h"
#include "common/CoreFunctions.h"
#include "common/Display.h"
#include "common/RunError.h"

#include <QApplication>
#include <algorithm>
#include <mutex>
#include <new>

namespace tallyroom::Component {

namespace {

// Never destroyed: the host's objects must not be let go of after the host has taken its toolkit
// down.
HostContext& hostContext() {
    static auto* context = new HostContext;
    return *context;
}

int locks = 0;
int factories = 0;
bool madeApplication = false;

using Creator = LateBoundObject* (*)();

struct Creation {
    Guid id;
    Creator create;
};

constexpr Creation creations[] = {
    {classTLYR, []() -> LateBoundObject* { return new TLYR(hostContext()); }},
    {classAddInDescriptor, []() -> LateBoundObject* { return new a_BCAddInDescriptor; }},
    {classMemberInfo, []() -> LateBoundObject* { return new MemberInfo; }},
};

static_assert(std::ranges::equal(creations, creatableClasses, {}, &Creation::id,
                                 &CreatableClass::id),
              "what a host can create is what it can name");

class ClassFactory final : public IClassFactory {
public:
    explicit ClassFactory(Creator create) : m_create(create) { ++factories; }
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
            *object = Counted<IObject>(m_create()).detach();
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

    Creator m_create;
    std::uint32_t m_references = 1;
};

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
        Registry registry;
        InstallationRecord::write(registry, QStringLiteral("Add-Ins.02"), applicationInfo(),
                                  QStringLiteral("DLL"));
    });
}

IClassFactory* classFactory(const Guid& classId) {
    const auto* known = std::ranges::find(creations, classId, &Creation::id);
    return known == std::end(creations) ? nullptr : new ClassFactory(known->create);
}

bool canUnload() {
    return locks == 0 && factories == 0 && LateBoundObject::aliveCount() == 0 && !madeApplication;
}

Status registerClasses() {
    Registry registry;
    return ClassRegistration::add(registry, applicationInfo()) ? statusOk : statusSelfRegistration;
}

Status unregisterClasses() {
    Registry registry;
    return ClassRegistration::remove(registry) ? statusOk : statusSelfRegistration;
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
