// How the add-in describes itself to a host: members, and for each the entries that may be called.
#pragma once

#include "common/Objects.h"

#include <vector>

namespace tallyroom {

// Objects in the order in which they were added. Properties Count and Item(index), the index
// counted from 1; another index raises 9.
class Collection : public LateBoundObject {
public:
    Collection();

    void add(ObjectRef object) { m_objects.push_back(std::move(object)); }
    int count() const { return static_cast<int>(m_objects.size()); }
    const ObjectRef& item(int index) const; // from 1
    void clear() { m_objects.clear(); }

private:
    std::vector<ObjectRef> m_objects;
};

// One entry of a member: a method of the class TLYR with what a host must know to call it.
// Properties SecurityTag, CallName, Caption, ImpType, Location and Parameters, all read-only;
// method SetParameters with any number of values.
class a_MemberImplements : public LateBoundObject {
public:
    a_MemberImplements(std::int32_t impType, QString callName, QString caption,
                       std::int32_t location);

    // The kinds of value that the entry wants, in order; see ParameterTypes. No values leave what
    // was set before.
    void SetParameters(const Arguments& Parms);

private:
    std::int32_t m_impType;
    QString m_callName;
    QString m_caption;
    std::int32_t m_location;
    QString m_securityTag;
    VariantArray m_parameters{{}, 1, 1};
};

// A named feature. Method AddImplement(type, call name, caption[, location]), which returns the new
// entry; properties Name, Description (both writable) and Implement, its entries.
class a_MemberDescriptor : public LateBoundObject {
public:
    a_MemberDescriptor();
    ~a_MemberDescriptor() override { m_entries->clear(); } // a host may still hold them

    ObjectRef AddImplement(std::int32_t aType, const QString& CallName, const QString& Caption,
                           std::int32_t Location = 0);

private:
    QString m_name;
    QString m_description;
    ObjectRef m_implement;
    Collection* m_entries; // owned by m_implement
};

// The root that hosts create. Function GetApp (see ApplicationObject) and property Members.
class a_BCAddInDescriptor : public LateBoundObject {
public:
    a_BCAddInDescriptor();
    ~a_BCAddInDescriptor() override { m_members->clear(); } // as its members do

private:
    void DescribeAddIn();
    bool AddMember(const QString& Name, const QString& Description);

    ObjectRef m_memberList;
    Collection* m_members; // owned by m_memberList
};

} // namespace tallyroom
