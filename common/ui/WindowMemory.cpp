#include "common/ui/WindowMemory.h"

#include "common/look/WindowFit.h"

#include <QAbstractButton>
#include <QAction>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QRadioButton>

namespace tallyroom::WindowMemory {

namespace {

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
    const QByteArray bytes = scrambled(QByteArray::fromHex(text.toLatin1()));
    const QByteArray json = bytes.mid(4);
    if (checksum(json) != bytes.left(4))
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
    window.resize(size.boundedTo(WindowFit::room(window)).expandedTo(window.minimumSize()));
    window.setWindowState(window.windowState().setFlag(
        Qt::WindowMaximized, state.value(QStringLiteral("maximized")).toBool()));
}

bool isMark(const QObject& control) {
    return qobject_cast<const QAction*>(&control) || qobject_cast<const QAbstractButton*>(&control);
}

QJsonValue stateOf(const QWidget& window, const QObject& control) {
    if (&control == &window)
        return sizeOf(window);
    return isMark(control) ? isChecked(control) : chosen(control);
}

void restoreState(QWidget& window, QObject& control, const QJsonValue& state) {
    if (&control == &window)
        resizeTo(window, state.toObject());
    else if (!isMark(control))
        choose(control, state.toString());
    else if (state.isBool())
        control.setProperty("checked", state.toBool());
}

} // namespace

QString textOf(const QWidget& window, const Remembered& remembered) {
    QJsonObject states;
    for (const QObject* control : remembered) {
        Q_ASSERT(control && !control->objectName().isEmpty());
        Q_ASSERT(!states.contains(control->objectName()));
        states.insert(control->objectName(), stateOf(window, *control));
    }
    const QByteArray json =
        QJsonDocument(QJsonObject{{formKey, window.objectName()}, {statesKey, states}})
            .toJson(QJsonDocument::Compact);
    return QString::fromLatin1(scrambled(checksum(json) + json).toHex());
}

void restore(QWidget& window, const Remembered& remembered, const QString& text) {
    const QJsonObject states = statesIn(text, window.objectName());
    for (QObject* control : remembered) {
        const auto state = states.constFind(control->objectName());
        if (state != states.constEnd())
            restoreState(window, *control, *state);
    }
}

} // namespace tallyroom::WindowMemory
