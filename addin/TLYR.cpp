#include "addin/TLYR.h"

#include "addin/Component.h"
#include "canvass/Tallyroom.h"
#include "common/RunError.h"

#include <QPointer>

namespace tallyroom {

namespace {

// Position k of the host's array, counted from 1 whatever its lower bound.
const Variant& element(const VariantArray& values, std::size_t position) {
    if (values.dimensions != 1 || position > values.elements.size())
        throw RunError::make(ErrorNumber::subscriptOutOfRange);
    return values.elements[position - 1];
}

QString userName(const VariantArray& values) {
    QString nobody = QStringLiteral("*Master*");
    try {
        const QString name = element(values, 6).toText();
        return name.isEmpty() ? nobody : name;
    } catch (const RunError&) { // a host without users simply gives none
        return nobody;
    }
}

// A second call while the window is up cannot show it modally again.
void showMainWindow(const HostContext& context) {
    static QPointer<Tallyroom> open;
    if (open)
        return;
    Tallyroom window(context);
    open = &window;
    window.showModally();
}

} // namespace

TLYR::TLYR(HostContext& context) : m_context(context) {
    addMethod(QStringLiteral("Smallforge"), [](const Arguments&) { return Variant(); });
    addMethod(QStringLiteral("TLYRShow"), [this](const Arguments& args) {
        TLYRShow(argument(args, 0));
        return Variant();
    });
}

void TLYR::TLYRShow(const Variant& argument) {
    const VariantArray& values = argument.toArray();
    m_context.DataPath = element(values, 1).toText();
    m_context.BucketForm = element(values, 2).toObject();
    m_context.DatePickerForm = element(values, 3).toObject();
    m_context.HostMenuForm = element(values, 4).toObject();
    m_context.SplashPicture = element(values, 5).toObject();
    m_context.CurrentUser = userName(values);
    Component::requireDisplay();
    showMainWindow(m_context);
}

} // namespace tallyroom
