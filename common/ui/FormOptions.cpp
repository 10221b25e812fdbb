#include "common/ui/FormOptions.h"

#include <QAction>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QRadioButton>
#include <QScreen>

namespace tallyroom::FormOptions {

namespace {

enum class Kind {
    Mark,   // a check mark: true or false
    Choice, // the one that is chosen of a menu's entries or a panel's option buttons
    Size,   // the window's own size, and whether it fills the screen
};

struct Remembered {
    const char16_t* form;
    const char16_t* control;
    Kind kind;
};

// Everything that is remembered. All else opens as it was designed, on purpose:
// - amounts and dates, and the audit's date filters: last week's would be recorded, or would hide
//   entries, unseen;
// - the rows and users that are selected: they are other ones by then;
// - column widths, which follow the texts, and window positions, which belong to the desktop;
// - what the data files keep: associations, period, the definitions of orderings; the windows that
//   set these up are as large as their contents.
constexpr Remembered rememberedStates[] = {
    {u"Tallyroom", u"mnuBlank0", Kind::Mark},
    {u"Tallyroom", u"mnuDateLine", Kind::Mark},
    {u"Tallyroom", u"mnuSigLine", Kind::Mark},
    {u"Tallyroom", u"mnuMult", Kind::Mark},
    {u"Tallyroom", u"mnuDept", Kind::Mark},
    {u"Tallyroom", u"mnuPos", Kind::Mark},
    {u"Tallyroom", u"mnuSenDate", Kind::Mark},
    {u"Tallyroom", u"mnuSenNum", Kind::Mark},
    {u"Tallyroom", u"mnuBreakOut", Kind::Mark},
    {u"Tallyroom", u"mnuAltPhone", Kind::Mark},
    {u"Tallyroom", u"mnuCellPhone", Kind::Mark},
    {u"Tallyroom", u"mnuPager", Kind::Mark},
    {u"Tallyroom", u"mnuTotal", Kind::Choice},
    {u"Tallyroom", u"MnuOrd", Kind::Choice},
    {u"Tallyroom", u"Tallyroom", Kind::Size},
    {u"frmTLYRAudit", u"SSPanel1", Kind::Choice},
    {u"frmTLYRAudit", u"Check3", Kind::Mark},
    {u"frmTLYRAudit", u"Check4", Kind::Mark},
    {u"frmTLYRAudit", u"Check5", Kind::Mark},
    {u"frmTLYRAudit", u"Check6", Kind::Mark},
    {u"frmTLYRAudit", u"frmTLYRAudit", Kind::Size},
    {u"frmTLYRAuditDetails", u"frmTLYRAuditDetails", Kind::Size},
    {u"frmUndo", u"frmUndo", Kind::Size},
};

const QString formKey = QStringLiteral("form");
const QString statesKey = QStringLiteral("states");
constexpr char scrambleKey[] = "Overtime is offered to the longest serving first";

QByteArray scrambled(QByteArray bytes) {
    constexpr qsizetype keyLength = sizeof scrambleKey - 1;
    for (qsizetype at = 0; at < bytes.size(); ++at)
        bytes[at] = static_cast<char>(bytes[at] ^ scrambleKey[at % keyLength]);
    return bytes;
}

QByteArray checksum(const QByteArray& json) {
    return QByteArray::number(qChecksum(json), 16).rightJustified(4, '0');
}

// The object's states when the text is whole and the window's own, otherwise none.
QJsonObject statesIn(const QString& text, const QString& form) {
    const QByteArray plain = scrambled(QByteArray::fromHex(text.toLatin1()));
    const QByteArray json = plain.mid(4);
    if (checksum(json) != plain.left(4))
        return {};
    const QJsonObject all = QJsonDocument::fromJson(json).object();
    return all.value(formKey).toString() == form ? all.value(statesKey).toObject() : QJsonObject();
}

QList<QObject*> entries(const QObject& holder) {
    QList<QObject*> result;
    if (const auto* menu = qobject_cast<const QMenu*>(&holder)) {
        for (QAction* action : menu->actions()) {
            if (action->isCheckable())
                result.append(action);
        }
    } else {
        for (QRadioButton* button : holder.findChildren<QRadioButton*>())
            result.append(button);
    }
    return result;
}

bool isChecked(const QObject& control) {
    return control.property("checked").toBool();
}

// An ordering is known by its description; its place in the menu changes as others come and go.
QString entryName(const QObject& entry) {
    const QVariant description = entry.property("descr");
    return description.isValid() ? description.toString() : entry.objectName();
}

QJsonValue chosen(const QObject& holder) {
    for (const QObject* entry : entries(holder)) {
        if (isChecked(*entry))
            return entryName(*entry);
    }
    return {};
}

void choose(const QObject& holder, const QString& name) {
    if (name.isEmpty()) // nothing was chosen; an ordering may have an empty description
        return;
    const QList<QObject*> all = entries(holder);
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const QObject* entry) { return entryName(*entry) == name; });
    if (found == all.end())
        return;
    for (QObject* entry : all)
        entry->setProperty("checked", entry == *found);
}

QJsonValue sizeOf(const QWidget& window) {
    const bool fills = window.isMaximized();
    const QSize size = fills ? window.normalGeometry().size() : window.size();
    return QJsonObject{{QStringLiteral("width"), size.width()},
                       {QStringLiteral("height"), size.height()},
                       {QStringLiteral("maximized"), fills}};
}

// A size from a larger screen is cut to this one.
void resizeTo(QWidget& window, const QJsonObject& state) {
    const QSize size(state.value(QStringLiteral("width")).toInt(),
                     state.value(QStringLiteral("height")).toInt());
    if (size.isEmpty())
        return;
    window.resize(
        size.boundedTo(window.screen()->availableSize()).expandedTo(window.minimumSize()));
    window.setWindowState(window.windowState().setFlag(
        Qt::WindowMaximized, state.value(QStringLiteral("maximized")).toBool()));
}

QJsonValue stateOf(const QWidget& window, const Remembered& remembered) {
    if (remembered.kind == Kind::Size)
        return sizeOf(window);
    const auto* control = window.findChild<QObject*>(QString::fromUtf16(remembered.control));
    return remembered.kind == Kind::Mark ? isChecked(*control) : chosen(*control);
}

void restoreState(QWidget& window, const Remembered& remembered, const QJsonValue& state) {
    if (remembered.kind == Kind::Size) {
        resizeTo(window, state.toObject());
        return;
    }
    auto* control = window.findChild<QObject*>(QString::fromUtf16(remembered.control));
    if (remembered.kind == Kind::Choice)
        choose(*control, state.toString());
    else if (state.isBool())
        control->setProperty("checked", state.toBool());
}

} // namespace

QString textOf(const QWidget& window) {
    QJsonObject states;
    for (const Remembered& remembered : rememberedStates) {
        if (window.objectName() == QStringView(remembered.form))
            states.insert(QString::fromUtf16(remembered.control), stateOf(window, remembered));
    }
    if (states.isEmpty())
        return {};
    const QByteArray json =
        QJsonDocument(QJsonObject{{formKey, window.objectName()}, {statesKey, states}})
            .toJson(QJsonDocument::Compact);
    return QString::fromLatin1(scrambled(checksum(json) + json).toHex());
}

void restore(QWidget& window, const QString& text) {
    const QJsonObject states = statesIn(text, window.objectName());
    for (const Remembered& remembered : rememberedStates) {
        const auto state = states.constFind(QString::fromUtf16(remembered.control));
        if (window.objectName() == QStringView(remembered.form) && state != states.constEnd())
            restoreState(window, remembered, *state);
    }
}

} // namespace tallyroom::FormOptions
