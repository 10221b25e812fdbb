#include "common/Objects.h"
#include "tests/support/Printing.h"

#include <stdexcept>

using namespace tallyroom;

namespace {

class Sample : public LateBoundObject {
public:
    Sample() {
        addProperty(
            QStringLiteral("Value"), [this](const Arguments&) { return m_value; },
            [this](const Arguments& args) { return m_value = argument(args, 0); });
        addMethod(QStringLiteral("Fail"), [](const Arguments&) -> Variant {
            throw RunError(1234, QStringLiteral("broken"), QStringLiteral("Sample"));
        });
        addMethod(QStringLiteral("FailOddly"),
                  [](const Arguments&) -> Variant { throw std::runtime_error("odd"); });
    }

private:
    Variant m_value;
};

TEST(Objects, ValuesCrossTheBoundaryUnchanged) {
    const ObjectRef object = makeObject<Sample>();
    const VariantArray array{{Variant(1), Variant(u"two"), Variant::null()}, 5, 1};
    for (const Variant& value :
         {Variant(), Variant(true), Variant(-7), Variant(0.25), Variant(Date{39449.5}),
          Variant(u"Zoë\t|"), Variant(QByteArray("\0\xff", 2))}) {
        object.setProperty(QStringLiteral("VALUE"), value);
        EXPECT_TRUE(object.property(QStringLiteral("value")).sameValue(value));
    }
    object.setProperty(QStringLiteral("Value"), Variant(array));
    const VariantArray back = object.property(QStringLiteral("Value")).toArray();
    EXPECT_EQ(back.lowerBound, 5);
    ASSERT_EQ(back.elements.size(), 3U);
    EXPECT_EQ(back.elements[1].toText(), QStringLiteral("two"));
    EXPECT_TRUE(back.elements[2].isNull());
    object.setProperty(QStringLiteral("Value"), Variant(object));
    EXPECT_EQ(object.property(QStringLiteral("Value")).toObject().get(), object.get());
    object.setProperty(QStringLiteral("Value"), Variant()); // lets go of itself
}

TEST(Objects, FailuresBecomeErrorsOfTheCaller) {
    const int before = LateBoundObject::aliveCount();
    {
        const ObjectRef object = makeObject<Sample>();
        EXPECT_EQ(errorNumberOf([&] { object.call(QStringLiteral("fail")); }), 1234);
        EXPECT_EQ(errorNumberOf([&] { object.call(QStringLiteral("FailOddly")); }), 51);
        EXPECT_EQ(errorNumberOf([&] { object.call(QStringLiteral("Nothing")); }), 438);
        EXPECT_EQ(errorNumberOf([] { ObjectRef().call(QStringLiteral("Show")); }), 91);
        EXPECT_EQ(object.get()->invoke(nullptr, InvokeKind::Method, nullptr, 0, nullptr, nullptr),
                  statusException);
    }
    EXPECT_EQ(LateBoundObject::aliveCount(), before);
}

} // namespace
