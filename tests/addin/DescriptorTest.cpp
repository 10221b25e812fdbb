#include "addin/Descriptor.h"
#include "tests/support/Printing.h"

#include <QStringList>

using namespace tallyroom;

namespace {

QString text(const ObjectRef& object, const char16_t* name) {
    return object.property(QString::fromUtf16(name)).toText();
}

ObjectRef item(const ObjectRef& collection, int index) {
    return collection.property(QStringLiteral("Item"), {Variant(index)}).toObject();
}

QString line(const ObjectRef& entry) {
    QStringList cells;
    for (const char16_t* name : {u"CallName", u"Caption", u"ImpType", u"Location", u"SecurityTag"})
        cells.append(text(entry, name));
    const VariantArray parameters = entry.property(QStringLiteral("Parameters")).toArray();
    EXPECT_EQ(parameters.lowerBound, 1);
    for (const Variant& kind : parameters.elements)
        cells.append(kind.toText());
    return cells.join(u' ');
}

TEST(Descriptor, DescribesTheAddIn) {
    const int before = LateBoundObject::aliveCount();
    {
        const ObjectRef descriptor = makeObject<a_BCAddInDescriptor>();
        const ObjectRef members = descriptor.property(QStringLiteral("Members")).toObject();
        EXPECT_EQ(text(members, u"Count"), QStringLiteral("1"));
        const ObjectRef member = item(members, 1);
        EXPECT_EQ(text(member, u"Name"), QStringLiteral("TLYR"));
        EXPECT_EQ(text(member, u"Description"), QStringLiteral("Tallyroom"));
        const ObjectRef entries = member.property(QStringLiteral("Implement")).toObject();
        EXPECT_EQ(text(entries, u"Count"), QStringLiteral("2"));
        EXPECT_EQ(line(item(entries, 1)),
                  QStringLiteral("Smallforge Database Structure 1 0  2 10"));
        EXPECT_EQ(line(item(entries, 2)),
                  QStringLiteral("TLYRShow Tallyroom 0 2 OXA 2 1 6 0 5 13"));
        for (const int index : {0, 3})
            EXPECT_EQ(errorNumberOf([&] { item(entries, index); }), 9);
        EXPECT_EQ(errorNumberOf([&] {
                      item(entries, 1).setProperty(QStringLiteral("Caption"), Variant(u"x"));
                  }),
                  438)
            << "entries are read-only";
        const ObjectRef app = descriptor.call(QStringLiteral("GetApp")).toObject();
        EXPECT_EQ(text(app, u"EXEName"), QStringLiteral("tests_addin"));
    }
    EXPECT_EQ(LateBoundObject::aliveCount(), before);
}

TEST(Descriptor, ItsEndEmptiesTheCollectionsThatAHostStillHolds) {
    ObjectRef descriptor = makeObject<a_BCAddInDescriptor>();
    const ObjectRef members = descriptor.property(QStringLiteral("Members")).toObject();
    const ObjectRef entries = item(members, 1).property(QStringLiteral("Implement")).toObject();
    descriptor = {};
    EXPECT_EQ(text(members, u"Count"), QStringLiteral("0"));
    EXPECT_EQ(text(entries, u"Count"), QStringLiteral("0"));
}

TEST(Descriptor, LocationChoosesTheSecurityTag) {
    const ObjectRef member = makeObject<a_MemberDescriptor>();
    const QString tags[] = {QString(),
                            QStringLiteral("SXA"),
                            QStringLiteral("OXA"),
                            QStringLiteral("RXA"),
                            QStringLiteral("UXA"),
                            QString()};
    for (int location = 0; location <= 5; ++location) {
        const ObjectRef entry =
            member
                .call(QStringLiteral("AddImplement"),
                      {Variant(0), Variant(u"a"), Variant(u"b"), Variant(location)})
                .toObject();
        EXPECT_EQ(text(entry, u"SecurityTag"), tags[location]);
    }
    EXPECT_EQ(errorNumberOf([&] { member.call(QStringLiteral("AddImplement"), {Variant(0)}); }),
              450);
}

TEST(Descriptor, ParametersAreCopiedAtEachRead) {
    const ObjectRef entry = makeObject<a_MemberImplements>(0, QString(), QString(), 0);
    const auto kinds = [&] { return entry.property(QStringLiteral("Parameters")).toArray(); };
    entry.call(QStringLiteral("SetParameters"));
    EXPECT_TRUE(kinds().elements.empty());
    entry.call(QStringLiteral("SetParameters"), {Variant(1), Variant(2), Variant(u"three")});
    VariantArray first = kinds();
    first.elements.clear();
    EXPECT_EQ(kinds().elements.size(), 3U);
    entry.call(QStringLiteral("SetParameters"));
    EXPECT_EQ(kinds().elements.size(), 3U) << "no values leave them";
}

} // namespace
