// The smallest host: opens the board on a data folder with nothing but the standard library and the
// public header. Usage: plainhost MODULE FOLDER [USER]
#include "common/HostInterface.h"

#include <algorithm>
#include <cstdio>
#include <dlfcn.h>
#include <string>

using namespace tallyroom;

namespace {

// A host object with at most one property. Deletes itself with its last reference.
class HostObject : public IObject {
public:
    HostObject(std::u16string property, BoundaryValue value)
        : m_property(std::move(property)), m_value(std::move(value)) {}
    virtual ~HostObject() = default;

    std::uint32_t addRef() noexcept override { return ++m_references; }
    std::uint32_t release() noexcept override {
        const std::uint32_t left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }
    Status invoke(const char16_t* name, InvokeKind kind, const BoundaryValue*, std::size_t,
                  BoundaryValue* result, BoundaryError* error) noexcept override {
        if (kind == InvokeKind::PropertyGet && name == m_property) {
            if (result)
                *result = m_value;
            return statusOk;
        }
        if (error)
            *error = {438, u"Object doesn't support this property or method", u"plainhost"};
        return statusException;
    }

private:
    std::u16string m_property;
    BoundaryValue m_value;
    std::uint32_t m_references = 0;
};

Counted<IObject> makeObject(const std::u16string& property, const BoundaryValue& value) {
    return Counted<IObject>(new HostObject(property, value));
}

std::u16string wide(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string narrow(const std::u16string& text) {
    std::string result;
    std::transform(text.begin(), text.end(), std::back_inserter(result),
                   [](char16_t c) { return c < 128 ? static_cast<char>(c) : '?'; });
    return result;
}

Counted<IObject> create(void* module, const Guid& classId) {
    const auto getClassObject =
        reinterpret_cast<DllGetClassObjectFunction*>(dlsym(module, "DllGetClassObject"));
    void* made = nullptr;
    if (!getClassObject || getClassObject(&classId, &interfaceClassFactory, &made) != statusOk)
        return {};
    const auto factory = Counted<IClassFactory>::adopt(static_cast<IClassFactory*>(made));
    IObject* object = nullptr;
    factory->createInstance(&object);
    return Counted<IObject>::adopt(object);
}

BoundaryValue call(const Counted<IObject>& object, const char16_t* name,
                   const std::vector<BoundaryValue>& arguments) {
    BoundaryValue result;
    BoundaryError error;
    if (object->invoke(name, InvokeKind::Method, arguments.data(), arguments.size(), &result,
                       &error) < 0)
        std::fprintf(stderr, "error %d: %s\n", error.number, narrow(error.description).c_str());
    return result;
}

int run(void* module, const std::string& folder, const std::string& user) {
    const Counted<IObject> info = create(module, classMemberInfo);
    const Counted<IObject> entry = create(module, classTLYR);
    if (!info || !entry)
        return 1;
    const BoundaryValue version = call(info, u"dllVersion", {});
    std::fprintf(stderr, "version %s\n", narrow(std::get<std::u16string>(version)).c_str());
    const auto values = std::make_shared<BoundaryArray>();
    values->elements = {wide(folder),
                        makeObject(u"employeefilter", std::u16string(u"<> NULL")),
                        makeObject(u"", {}),
                        makeObject(u"", {}),
                        makeObject(u"Picture", BoundaryNull{}),
                        wide(user)};
    call(entry, u"TLYRShow", {values});
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: plainhost MODULE FOLDER [USER]\n");
        return 2;
    }
    void* module = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (!module) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    return run(module, argv[2], argc > 3 ? argv[3] : "");
}
