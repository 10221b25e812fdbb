// The binary boundary between the add-in and a host. This header needs nothing but the standard
// library, so that a host of any toolkit can include it.
//
// A host loads the module, calls DllGetClassObject for the class that it wants, asks the class
// factory for an instance and speaks to that instance by member name through IObject::invoke().
// The host's own objects (forms, pictures, lists) cross in the other direction through the same
// interface. Both sides must be built with the same C++ ABI and standard library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tallyroom {

// Outcome of a boundary call. Failures are negative; values follow the component model's.
using Status = std::int32_t;
inline constexpr Status statusOk = 0;
inline constexpr Status statusFalse = 1; // success, but the answer is "no"
inline constexpr Status statusNoInterface = static_cast<Status>(0x80004002);
inline constexpr Status statusPointer = static_cast<Status>(0x80004003);
inline constexpr Status statusFail = static_cast<Status>(0x80004005);
inline constexpr Status statusNoAggregation = static_cast<Status>(0x80040110);
inline constexpr Status statusClassNotAvailable = static_cast<Status>(0x80040111);
inline constexpr Status statusSelfRegistration = static_cast<Status>(0x80040201);
inline constexpr Status statusException = static_cast<Status>(0x80020009); // see BoundaryError
inline constexpr Status statusOutOfMemory = static_cast<Status>(0x8007000E);

class IObject;

// Counted reference to an object of either side. Copying adds a reference, destruction releases it.
template<class Interface>
class Counted {
public:
    Counted() = default;
    // Takes over a reference that the caller already owns.
    static Counted adopt(Interface* object) {
        Counted result;
        result.m_object = object;
        return result;
    }
    explicit Counted(Interface* object) : m_object(object) {
        if (m_object)
            m_object->addRef();
    }
    Counted(const Counted& other) : Counted(other.m_object) {}
    Counted(Counted&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    Counted& operator=(Counted other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~Counted() {
        if (m_object)
            m_object->release();
    }
    Interface* get() const { return m_object; }
    Interface* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    // Gives the reference to the caller, who must release it.
    Interface* detach() { return std::exchange(m_object, nullptr); }

private:
    Interface* m_object = nullptr;
};

struct BoundaryNull {
    friend bool operator==(BoundaryNull, BoundaryNull) { return true; }
};

// A point in time: days since 30 December 1899, the fraction is the time of day.
struct BoundaryDate {
    double serial = 0;
};

struct BoundaryArray;

// One value that crosses the boundary: empty, Null, boolean, 32-bit integer, double, date,
// UTF-16 text, object (may be a null reference), bytes (a PNG picture, for one), array.
using BoundaryValue = std::variant<std::monostate, BoundaryNull, bool, std::int32_t, double,
                                   BoundaryDate, std::u16string, Counted<IObject>,
                                   std::vector<std::uint8_t>, std::shared_ptr<BoundaryArray>>;

// Elements in order; lowerBound is the index of the first one. An array that is not
// one-dimensional states its number of dimensions and stores its elements in row order.
struct BoundaryArray {
    std::vector<BoundaryValue> elements;
    std::int32_t lowerBound = 0;
    std::int32_t dimensions = 1;
};

// Filled when invoke() returns statusException: a run-time error number, its text and origin.
struct BoundaryError {
    std::int32_t number = 0;
    std::u16string description;
    std::u16string source;
};

enum class InvokeKind : std::int32_t { Method = 1, PropertyGet = 2, PropertySet = 4 };

// A late-bound object. Member names are compared without regard to case. Objects live on the
// user-interface thread; no call is made from another one.
class IObject {
public:
    virtual std::uint32_t addRef() noexcept = 0;
    virtual std::uint32_t release() noexcept = 0;

    // Calls the member `name`. `args` points to `count` values; for PropertySet the last one is the
    // value to set. `result` and `error` may be null. An unknown member is error 438. Nothing is
    // ever thrown: a failure returns statusException and fills `error`.
    virtual Status invoke(const char16_t* name, InvokeKind kind, const BoundaryValue* args,
                          std::size_t count, BoundaryValue* result,
                          BoundaryError* error) noexcept = 0;

protected:
    ~IObject() = default;
};

// 128-bit identifier of a class or an interface.
struct Guid {
    std::uint32_t data1;
    std::uint16_t data2;
    std::uint16_t data3;
    std::uint8_t data4[8];
    friend bool operator==(const Guid&, const Guid&) = default;
};

// Makes instances of one class.
class IClassFactory {
public:
    virtual std::uint32_t addRef() noexcept = 0;
    virtual std::uint32_t release() noexcept = 0;
    // On success *object holds one reference that the caller must release.
    virtual Status createInstance(IObject** object) noexcept = 0;
    // Keeps the module loaded while true calls outnumber false ones.
    virtual Status lockServer(bool lock) noexcept = 0;

protected:
    ~IClassFactory() = default;
};

inline constexpr Guid interfaceClassFactory{
    0x00000001, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr Guid classTLYR{
    0x6B1F5C52, 0x3B0E, 0x4C57, {0x9A, 0x41, 0x70, 0x2D, 0x15, 0xE8, 0xB0, 0x01}};
inline constexpr Guid classAddInDescriptor{
    0x6B1F5C52, 0x3B0E, 0x4C57, {0x9A, 0x41, 0x70, 0x2D, 0x15, 0xE8, 0xB0, 0x02}};
inline constexpr Guid classMemberInfo{
    0x6B1F5C52, 0x3B0E, 0x4C57, {0x9A, 0x41, 0x70, 0x2D, 0x15, 0xE8, 0xB0, 0x03}};

// The classes that a host can create, by the names that the self-description uses.
struct CreatableClass {
    const char16_t* name;
    Guid id;
};
inline constexpr CreatableClass creatableClasses[] = {
    {u"TLYR", classTLYR},
    {u"a_BCAddInDescriptor", classAddInDescriptor},
    {u"MemberInfo", classMemberInfo}};

// The module's four exports, by name. DllGetClassObject answers statusOk and sets *object to an
// IClassFactory with one reference, which the caller must release. DllCanUnloadNow answers
// statusOk when no object is alive and no lock is held, else statusFalse.
extern "C" {
using DllGetClassObjectFunction = Status(const Guid* classId, const Guid* interfaceId,
                                         void** object);
using DllCanUnloadNowFunction = Status();
using DllRegisterServerFunction = Status();
using DllUnregisterServerFunction = Status();
}

// Kinds of value that the host passes to an add-in method.
enum ParameterTypes : std::int32_t {
    frm_Menu = 0,
    frmBucket = 1,
    DataPathBCX = 2,
    ClientDataPathBCX = 3,
    ArchiveDataPathBCX = 4,
    SplashScreenPictureBox = 5,
    PickDateForm = 6
};

} // namespace tallyroom
