#include "common/Objects.h"

#include "common/RunError.h"

#include <new>

namespace tallyroom {

namespace {

BoundaryValue arrayToBoundary(const VariantArray& array) {
    auto result = std::make_shared<BoundaryArray>();
    result->lowerBound = array.lowerBound;
    result->dimensions = array.dimensions;
    for (const Variant& element : array.elements)
        result->elements.push_back(toBoundary(element));
    return result;
}

struct FromBoundary {
    Variant operator()(std::monostate) const { return {}; }
    Variant operator()(BoundaryNull) const { return Variant::null(); }
    Variant operator()(bool value) const { return Variant(value); }
    Variant operator()(std::int32_t value) const { return {value}; }
    Variant operator()(double value) const { return {value}; }
    Variant operator()(BoundaryDate value) const { return {Date{value.serial}}; }
    Variant operator()(const std::u16string& value) const {
        return {QString::fromStdU16String(value)};
    }
    Variant operator()(const Counted<IObject>& value) const { return {ObjectRef(value)}; }
    Variant operator()(const std::vector<std::uint8_t>& value) const {
        return {QByteArray(reinterpret_cast<const char*>(value.data()),
                           static_cast<qsizetype>(value.size()))};
    }
    Variant operator()(const std::shared_ptr<BoundaryArray>& value) const {
        if (!value)
            throw RunError::make(ErrorNumber::subscriptOutOfRange); // an array never dimensioned
        VariantArray array{{}, value->lowerBound, value->dimensions};
        for (const BoundaryValue& element : value->elements)
            array.elements.push_back(fromBoundary(element));
        return {std::move(array)};
    }
};

void report(BoundaryError* target, const RunError& error) {
    if (target)
        *target = {error.number(), error.description().toStdU16String(),
                   error.source().toStdU16String()};
}

RunError runErrorOf(const BoundaryError& error) {
    return {error.number, QString::fromStdU16String(error.description),
            QString::fromStdU16String(error.source)};
}

} // namespace

BoundaryValue toBoundary(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Empty:
        return std::monostate{};
    case Variant::Type::Null:
        return BoundaryNull{};
    case Variant::Type::Boolean:
        return value.toBoolean();
    case Variant::Type::Long:
        return value.toLong();
    case Variant::Type::Double:
        return value.toDouble();
    case Variant::Type::Date:
        return BoundaryDate{value.toDate().serial};
    case Variant::Type::Text:
        return value.toText().toStdU16String();
    case Variant::Type::Object:
        return Counted<IObject>(value.toObject().get());
    case Variant::Type::Bytes:
        return std::vector<std::uint8_t>(value.toBytes().begin(), value.toBytes().end());
    case Variant::Type::Array:
        return arrayToBoundary(value.toArray());
    }
    return std::monostate{};
}

Variant fromBoundary(const BoundaryValue& value) {
    return std::visit(FromBoundary{}, value);
}

Variant ObjectRef::call(const QString& method, const Arguments& args) const {
    return invoke(method, InvokeKind::Method, args);
}

Variant ObjectRef::property(const QString& name, const Arguments& args) const {
    return invoke(name, InvokeKind::PropertyGet, args);
}

void ObjectRef::setProperty(const QString& name, const Variant& value) const {
    invoke(name, InvokeKind::PropertySet, {value});
}

Variant ObjectRef::invoke(const QString& name, InvokeKind kind, const Arguments& args) const {
    if (!m_object)
        throw RunError::make(ErrorNumber::objectNotSet);
    std::vector<BoundaryValue> values;
    for (const Variant& arg : args)
        values.push_back(toBoundary(arg));
    const std::u16string member = name.toStdU16String();
    BoundaryValue result;
    BoundaryError error;
    const Counted<IObject> alive = m_object; // the call may drop the last other reference
    const Status status =
        alive->invoke(member.c_str(), kind, values.data(), values.size(), &result, &error);
    if (status < 0 && error.number == 0) // the other side failed without a word
        throw RunError::make(status == statusOutOfMemory ? ErrorNumber::outOfMemory
                                                         : ErrorNumber::internalError);
    if (status < 0)
        throw runErrorOf(error);
    return tallyroom::fromBoundary(result);
}

std::uint32_t LateBoundObject::addRef() noexcept {
    return ++m_references;
}

std::uint32_t LateBoundObject::release() noexcept {
    const std::uint32_t left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

Status LateBoundObject::invoke(const char16_t* name, InvokeKind kind, const BoundaryValue* args,
                               std::size_t count, BoundaryValue* result,
                               BoundaryError* error) noexcept {
    try {
        const Member* found = name ? findMember(QString::fromUtf16(name), kind) : nullptr;
        if (!found)
            throw RunError::make(ErrorNumber::noSuchMember);
        const Member member = *found; // stays callable should the object go away meanwhile
        Arguments values;
        for (std::size_t i = 0; args && i < count; ++i)
            values.push_back(fromBoundary(args[i]));
        const Variant answer = member(values);
        if (result)
            *result = toBoundary(answer);
        return statusOk;
    } catch (const RunError& problem) {
        report(error, problem);
    } catch (const std::bad_alloc&) {
        report(error, RunError::make(ErrorNumber::outOfMemory));
    } catch (const std::exception& problem) {
        report(error, {ErrorNumber::internalError, QString::fromUtf8(problem.what()), {}});
    }
    return statusException;
}

void LateBoundObject::addMethod(const QString& name, const Member& member) {
    m_members.insert({name.toLower(), InvokeKind::Method}, member);
}

void LateBoundObject::addProperty(const QString& name, const Member& get, const Member& set) {
    m_members.insert({name.toLower(), InvokeKind::PropertyGet}, get);
    if (set)
        m_members.insert({name.toLower(), InvokeKind::PropertySet}, set);
}

// A late-bound caller cannot always tell a method from a property that it reads.
const LateBoundObject::Member* LateBoundObject::findMember(const QString& name,
                                                           InvokeKind kind) const {
    auto found = m_members.constFind({name.toLower(), kind});
    if (found == m_members.constEnd() && kind == InvokeKind::Method)
        found = m_members.constFind({name.toLower(), InvokeKind::PropertyGet});
    if (found == m_members.constEnd() && kind == InvokeKind::PropertyGet)
        found = m_members.constFind({name.toLower(), InvokeKind::Method});
    return found == m_members.constEnd() ? nullptr : &*found;
}

const Variant& argument(const Arguments& args, std::size_t index) {
    if (index >= args.size())
        throw RunError::make(ErrorNumber::wrongArgumentCount);
    return args[index];
}

} // namespace tallyroom
