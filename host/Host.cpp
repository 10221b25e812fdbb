#include "host/Host.h"

#include "common/RunError.h"
#include "host/DatePicker.h"
#include "host/HostMessages.h"
#include "host/SplashPicture.h"

namespace tallyroom::host {

Host::Host(const Options& options)
    : m_options(options), m_database(openHostDatabase(options.dataFolder)),
      m_data(readHostData(*m_database)), m_selection(m_data.employees) {
    if (options.selection)
        select(*options.selection);
    const QImage splash = drawSplash();
    m_menu = std::make_unique<frmMenu>(m_database, m_data, splash);
    m_menu->describe(options.dataFolder, options.user);
    QObject::connect(m_menu.get(), &frmMenu::boardRequested, m_menu.get(),
                     [this] { runCommand(m_menu.get(), [this] { openBoard(); }); });
    m_bucket = new BucketObject(m_selection, m_data);
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
    m_menu->show();
}

Variant Host::boardArguments() const {
    VariantArray values;
    values.lowerBound = 1;
    values.elements = {Variant(m_options.dataFolder), Variant(m_bucketForm),
                       Variant(m_datePickerForm),     Variant(m_menuForm),
                       Variant(m_splashPicture),      Variant(m_options.user)};
    return Variant(std::move(values));
}

void Host::openBoard() {
    if (!m_module)
        m_module = std::make_unique<AddInModule>(findModule(m_options.moduleFile));
    m_module->createObject(classTLYR).call(QStringLiteral("TLYRShow"), {boardArguments()});
}

} // namespace tallyroom::host
