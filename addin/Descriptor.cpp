#include "addin/Descriptor.h"

#include "addin/Application.h"
#include "common/RunError.h"

namespace tallyroom {

namespace {

// The kind of value that names the user; hosts know it by its number only, like kind 10, which
// nothing but the entry for the database structure asks for.
constexpr std::int32_t userNameKind = 13;
constexpr std::int32_t databaseStructureKind = 10;

QString securityTag(std::int32_t location) {
    static const QString letters = QStringLiteral("SORU");
    if (location < 1 || location > letters.size())
        return {};
    return letters.mid(location - 1, 1) + QStringLiteral("XA");
}

} // namespace

Collection::Collection() {
    addProperty(QStringLiteral("Count"), [this](const Arguments&) { return Variant(count()); });
    addProperty(QStringLiteral("Item"), [this](const Arguments& args) {
        return Variant(item(argument(args, 0).toLong()));
    });
}

const ObjectRef& Collection::item(int index) const {
    if (index < 1 || index > count())
        throw RunError::make(ErrorNumber::subscriptOutOfRange);
    return m_objects[static_cast<std::size_t>(index) - 1];
}

a_MemberImplements::a_MemberImplements(std::int32_t impType, QString callName, QString caption,
                                       std::int32_t location)
    : m_impType(impType), m_callName(std::move(callName)), m_caption(std::move(caption)),
      m_location(location), m_securityTag(securityTag(location)) {
    addProperty(QStringLiteral("SecurityTag"),
                [this](const Arguments&) { return Variant(m_securityTag); });
    addProperty(QStringLiteral("CallName"),
                [this](const Arguments&) { return Variant(m_callName); });
    addProperty(QStringLiteral("Caption"), [this](const Arguments&) { return Variant(m_caption); });
    addProperty(QStringLiteral("ImpType"), [this](const Arguments&) { return Variant(m_impType); });
    addProperty(QStringLiteral("Location"),
                [this](const Arguments&) { return Variant(m_location); });
    addProperty(QStringLiteral("Parameters"),
                [this](const Arguments&) { return Variant(m_parameters); });
    addMethod(QStringLiteral("SetParameters"), [this](const Arguments& args) {
        SetParameters(args);
        return Variant();
    });
}

void a_MemberImplements::SetParameters(const Arguments& Parms) {
    if (!Parms.empty())
        m_parameters.elements = Parms;
}

a_MemberDescriptor::a_MemberDescriptor() : m_entries(new Collection) {
    m_implement = ObjectRef(Counted<IObject>(m_entries));
    addMethod(QStringLiteral("AddImplement"), [this](const Arguments& args) {
        return Variant(AddImplement(argument(args, 0).toLong(), argument(args, 1).toText(),
                                    argument(args, 2).toText(),
                                    args.size() > 3 ? args[3].toLong() : 0));
    });
    const auto text = [](QString& value) {
        return [&value](const Arguments&) { return Variant(value); };
    };
    const auto setText = [](QString& value) {
        return [&value](const Arguments& args) {
            value = argument(args, 0).toText();
            return Variant();
        };
    };
    addProperty(QStringLiteral("Description"), text(m_description), setText(m_description));
    addProperty(QStringLiteral("Implement"),
                [this](const Arguments&) { return Variant(m_implement); });
    addProperty(QStringLiteral("Name"), text(m_name), setText(m_name));
}

ObjectRef a_MemberDescriptor::AddImplement(std::int32_t aType, const QString& CallName,
                                           const QString& Caption, std::int32_t Location) {
    ObjectRef entry = makeObject<a_MemberImplements>(aType, CallName, Caption, Location);
    m_entries->add(entry);
    return entry;
}

a_BCAddInDescriptor::a_BCAddInDescriptor() : m_members(new Collection) {
    m_memberList = ObjectRef(Counted<IObject>(m_members));
    addMethod(QStringLiteral("GetApp"),
              [](const Arguments&) { return Variant(makeObject<ApplicationObject>()); });
    addProperty(QStringLiteral("Members"),
                [this](const Arguments&) { return Variant(m_memberList); });
    DescribeAddIn();
}

void a_BCAddInDescriptor::DescribeAddIn() {
    if (!AddMember(QStringLiteral("TLYR"), QStringLiteral("Tallyroom")))
        return;
    const ObjectRef member = m_members->item(m_members->count());
    const auto addEntry = [&member](const Arguments& implement, const Arguments& parameters) {
        member.call(QStringLiteral("AddImplement"), implement)
            .toObject()
            .call(QStringLiteral("SetParameters"), parameters);
    };
    addEntry({Variant(1), Variant(u"Smallforge"), Variant(u"Database Structure")},
             {Variant(DataPathBCX), Variant(databaseStructureKind)});
    addEntry({Variant(0), Variant(u"TLYRShow"), Variant(u"Tallyroom"), Variant(2)},
             {Variant(DataPathBCX), Variant(frmBucket), Variant(PickDateForm), Variant(frm_Menu),
              Variant(SplashScreenPictureBox), Variant(userNameKind)});
}

// A member that cannot be added leaves the descriptor without entries, and nobody is told.
bool a_BCAddInDescriptor::AddMember(const QString& Name, const QString& Description) {
    try {
        const ObjectRef member = makeObject<a_MemberDescriptor>();
        member.setProperty(QStringLiteral("Name"), Variant(Name));
        member.setProperty(QStringLiteral("Description"), Variant(Description));
        m_members->add(member);
        return true;
    } catch (const RunError&) {
        return false;
    }
}

} // namespace tallyroom
