// Late-bound objects: speaking to those of the other side, and offering our own.
#pragma once

#include "common/HostInterface.h"
#include "common/Variant.h"

#include <QHash>
#include <exception>
#include <functional>
#include <memory>
#include <vector>

namespace tallyroom {

using Arguments = std::vector<Variant>;

// A counted reference to a late-bound object, ours or the host's. Calls raise RunError: what the
// object reports, 438 for an unknown member, 91 when the reference is not set.
class ObjectRef {
public:
    ObjectRef() = default;
    explicit ObjectRef(Counted<IObject> object) : m_object(std::move(object)) {}

    bool isSet() const { return static_cast<bool>(m_object); }
    IObject* get() const { return m_object.get(); }

    Variant call(const QString& method, const Arguments& args = {}) const;
    Variant property(const QString& name, const Arguments& args = {}) const;
    void setProperty(const QString& name, const Variant& value) const;

private:
    Variant invoke(const QString& name, InvokeKind kind, const Arguments& args) const;

    Counted<IObject> m_object;
};

// Base of the objects that this side offers. Derived classes add their members in the constructor;
// invoke() finds them by name without regard to case and turns whatever they throw into an error
// of the boundary. Instances live on the heap and delete themselves with their last reference.
class LateBoundObject : public IObject {
public:
    using Member = std::function<Variant(const Arguments&)>;

    std::uint32_t addRef() noexcept final;
    std::uint32_t release() noexcept final;
    Status invoke(const char16_t* name, InvokeKind kind, const BoundaryValue* args,
                  std::size_t count, BoundaryValue* result, BoundaryError* error) noexcept final;

    // Objects of this module that somebody still holds.
    static int aliveCount() { return s_alive; }

    LateBoundObject(const LateBoundObject&) = delete;
    LateBoundObject& operator=(const LateBoundObject&) = delete;

protected:
    LateBoundObject() { ++s_alive; }
    virtual ~LateBoundObject() { --s_alive; }

    void addMethod(const QString& name, const Member& member);
    void addProperty(const QString& name, const Member& get, const Member& set = {});

private:
    struct MemberKey {
        QString name; // lower case
        InvokeKind kind;
        friend bool operator==(const MemberKey&, const MemberKey&) = default;
        friend size_t qHash(const MemberKey& key, size_t seed) {
            return qHashMulti(seed, key.name, static_cast<int>(key.kind));
        }
    };
    const Member* findMember(const QString& name, InvokeKind kind) const;

    QHash<MemberKey, Member> m_members;
    static inline int s_alive = 0;
    std::uint32_t m_references = 0;
};

// Makes an object of a class derived from LateBoundObject and returns the first reference to it.
template<class Type, class... Args>
ObjectRef makeObject(Args&&... args) {
    return ObjectRef(Counted<IObject>(new Type(std::forward<Args>(args)...)));
}

// Argument `index`, or error 450 when the caller gave fewer.
const Variant& argument(const Arguments& args, std::size_t index);

BoundaryValue toBoundary(const Variant& value);
Variant fromBoundary(const BoundaryValue& value);

// Closes a recordset, a connection or whatever else has a close(), and ignores every error: used
// where nothing useful could be said about a close that fails. The reference stays as it is.
template<class Object>
void CloseObject(const std::shared_ptr<Object>& object) noexcept {
    try {
        if (object)
            object->close();
    } catch (const std::exception&) { // silent by design, see above
    }
}

} // namespace tallyroom
