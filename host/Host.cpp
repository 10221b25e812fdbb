#include "host/Host.h"

#include "common/RunError.h"
#include "host/DatePicker.h"
#include "host/HostMessages.h"
#include "host/SplashPicture.h"
#include "host/Versions.h"
#include "host/help/frmAbout.h"
#include "store/Workspace.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace tallyroom::host {

namespace {

// The class that an add-in's member is called on has the member's name.
const Guid& classOf(const QString& member) {
    for (const CreatableClass& known : creatableClasses) {
        if (member.compare(QString::fromUtf16(known.name), Qt::CaseInsensitive) == 0)
            return known.id;
    }
    throw RunError(ErrorNumber::cannotCreateObject,
                   QStringLiteral("The add-in's class \"%1\" is not known.").arg(member),
                   QStringLiteral("Brightclock"));
}

// The folder is what users can put right; a file that is damaged or in use speaks for itself, and
// so does a server.
std::shared_ptr<Database> openData(const QString& folder) {
    if (Workspace::isOnServer(folder))
        return Workspace::openHostOptions(folder);
    const auto refuse = [&folder](const QString& text) {
        throw RunError(ErrorNumber::invalidPath, text.arg(QDir::toNativeSeparators(folder)),
                       QStringLiteral("Brightclock"));
    };
    if (!QFileInfo(folder).isDir())
        refuse(QStringLiteral("There is no data folder \"%1\"."));
    if (!QFileInfo::exists(QDir(folder).filePath(QStringLiteral("bcx.mdb"))))
        refuse(QStringLiteral("\"%1\" is no data folder: it has no file bcx.mdb."));
    return Workspace::openHostOptions(folder);
}

} // namespace

Host::Host(const Options& options)
    : m_options(options), m_database(openData(options.dataFolder)),
      m_data(readHostData(*m_database)), m_buckets(options.dataFolder, options.user),
      m_selection(m_data.employees) {
    if (options.selection)
        select(*options.selection);
    else if (const NamedBucket* last = m_buckets.chosen(); last && !options.selectsAll)
        m_selection.setSelected(last->members(m_data.employees), last->name);
    const QImage splash = drawSplash();
    m_menu = std::make_unique<frmMenu>(m_database, m_data, splash);
    m_menu->describe(options.dataFolder, options.user);
    QObject::connect(m_menu.get(), &frmMenu::entryRequested, m_menu.get(),
                     [this](const QString& callName) {
                         runCommand(m_menu.get(), [this, callName] { callEntry(callName); });
                     });
    QObject::connect(m_menu.get(), &frmMenu::aboutRequested, m_menu.get(), [this] {
        frmAbout(versionLines(m_options.moduleFile), QApplication::activeWindow()).exec();
    });
    m_bucket = new BucketObject(m_selection, m_buckets, m_data);
    m_bucketForm = ObjectRef(Counted<IObject>(m_bucket));
    m_datePickerForm = makeObject<DatePickerObject>();
    m_menuForm = makeObject<MenuObject>(m_menu.get());
    m_splashPicture = makeObject<SplashPictureObject>(splash);
}

Host::~Host() {
    m_bucket->forgetTarget();
    m_module.reset();
}

void Host::select(const QStringList& codes) {
    const QStringList unknown = m_selection.select(codes);
    if (!unknown.isEmpty())
        throw RunError(ErrorNumber::invalidProcedureCall,
                       QStringLiteral("There is no employee with the code %1.")
                           .arg(unknown.join(QStringLiteral(", "))),
                       QStringLiteral("Brightclock"));
}

void Host::showMenu() {
    m_menu->setEntries({});
    m_menu->show();
    runCommand(m_menu.get(), [this] { m_menu->setEntries(entries()); });
}

const std::vector<AddInEntry>& Host::entries() {
    if (!m_module) {
        auto module = std::make_unique<AddInModule>(findModule(m_options.moduleFile));
        m_entries = readEntries(module->createObject(classAddInDescriptor));
        m_module = std::move(module);
    }
    return m_entries;
}

// A kind that this host has nothing for is passed as Empty.
Variant Host::valueOf(std::int32_t kind) const {
    constexpr std::int32_t userName = 13;
    switch (kind) {
    case frm_Menu:
        return Variant(m_menuForm);
    case ParameterTypes::frmBucket:
        return Variant(m_bucketForm);
    case DataPathBCX:
    case ClientDataPathBCX:
    case ArchiveDataPathBCX:
        return Variant(m_options.dataFolder);
    case SplashScreenPictureBox:
        return Variant(m_splashPicture);
    case PickDateForm:
        return Variant(m_datePickerForm);
    case userName:
        return Variant(m_options.user);
    default:
        return {};
    }
}

void Host::callEntry(const QString& callName) {
    const auto& all = entries();
    const auto found = std::find_if(all.begin(), all.end(), [&](const AddInEntry& entry) {
        return entry.callName.compare(callName, Qt::CaseInsensitive) == 0;
    });
    if (found == all.end())
        throw RunError(ErrorNumber::noSuchMember,
                       QStringLiteral("The add-in has no entry \"%1\".").arg(callName),
                       QStringLiteral("Brightclock"));
    VariantArray values;
    values.lowerBound = 1;
    for (const std::int32_t kind : found->parameters)
        values.elements.push_back(valueOf(kind));
    m_module->createObject(classOf(found->member))
        .call(found->callName, {Variant(std::move(values))});
}

} // namespace tallyroom::host
