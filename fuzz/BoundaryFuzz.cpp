// Calls across the module's boundary as a careless host makes them. A line is a call: the kind's
// digit, the member, and values after tabs. An object that comes back is the one called next; an
// empty line goes back to the first.
#include "addin/Descriptor.h"
#include "fuzz/Fuzz.h"

using namespace tallyroom;

namespace {

// A letter for the type, then the value.
BoundaryValue valueOf(const QString& text) {
    const QString rest = text.mid(1);
    switch (text.isEmpty() ? u' ' : text.front().unicode()) {
    case u'n':
        return BoundaryNull{};
    case u'f':
        return rest.isEmpty();
    case u'i':
        return static_cast<std::int32_t>(rest.toInt());
    case u'd':
        return rest.toDouble();
    case u'D':
        return BoundaryDate{rest.toDouble()};
    case u't':
        return rest.toStdU16String();
    case u'o':
        return Counted<IObject>();
    case u'b':
        return std::vector<std::uint8_t>(static_cast<std::size_t>(rest.size()));
    case u'a':
        return std::shared_ptr<BoundaryArray>();
    case u'A':
        return std::make_shared<BoundaryArray>(BoundaryArray{{valueOf(rest)}, rest.toInt(), 1});
    default:
        return std::monostate{};
    }
}

// The object that answers, or null.
Counted<IObject> call(const Counted<IObject>& object, const QString& line) {
    const QStringList fields = line.split(u'\t');
    const auto kind = static_cast<InvokeKind>(fields[0].left(1).toInt());
    const std::u16string member = fields[0].mid(1).toStdU16String();
    std::vector<BoundaryValue> values;
    for (qsizetype at = 1; at < fields.size(); ++at)
        values.push_back(valueOf(fields[at]));
    BoundaryValue result;
    BoundaryError error;
    const Status status =
        object->invoke(member.c_str(), kind, values.data(), values.size(), &result, &error);
    require(status == statusOk || (status == statusException && error.number != 0),
            "a call succeeds or tells its error");
    require(errorOf([&] {
                require(toBoundary(fromBoundary(result)).index() == result.index(),
                        "a value crosses back as it came");
            }) == 0,
            "an answer can be read");
    const auto* answer = std::get_if<Counted<IObject>>(&result);
    return answer ? *answer : Counted<IObject>();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    {
        const Counted<IObject> first(new a_BCAddInDescriptor);
        Counted<IObject> current = first;
        for (const QString& line : QString::fromUtf8(bytesOf(data, size)).split(u'\n')) {
            if (line.isEmpty())
                current = first;
            else if (const auto next = call(current, line))
                current = next;
        }
    }
    require(LateBoundObject::aliveCount() == 0, "what nobody holds is gone");
    return 0;
}
