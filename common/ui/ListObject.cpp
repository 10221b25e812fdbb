#include "common/ui/ListObject.h"

#include "common/RunError.h"

#include <memory>

namespace tallyroom {

ListObject::ListObject(QListWidget* list) : m_list(list) {
    addMethod(QStringLiteral("Clear"), [this](const Arguments&) {
        this->list().clear();
        return Variant();
    });
    addMethod(QStringLiteral("AddItem"), [this](const Arguments& args) {
        this->list().addItem(argument(args, 0).toText());
        return Variant();
    });
    addMethod(QStringLiteral("RemoveItem"), [this](const Arguments& args) {
        const std::unique_ptr<QListWidgetItem> removed(this->list().takeItem(row(args)));
        return Variant();
    });
    addProperty(QStringLiteral("ListCount"),
                [this](const Arguments&) { return Variant(this->list().count()); });
    addProperty(QStringLiteral("List"), [this](const Arguments& args) {
        return Variant(this->list().item(row(args))->text());
    });
    addProperty(QStringLiteral("ListIndex"),
                [this](const Arguments&) { return Variant(this->list().currentRow()); });
}

QListWidget& ListObject::list() const {
    if (!m_list)
        throw RunError::make(ErrorNumber::objectNotSet);
    return *m_list;
}

int ListObject::row(const Arguments& args) const {
    const int index = argument(args, 0).toLong();
    if (index < 0 || index >= list().count())
        throw RunError::make(ErrorNumber::subscriptOutOfRange);
    return index;
}

} // namespace tallyroom
