// A list of ours as a late-bound object that the host fills.
#pragma once

#include "common/Objects.h"

#include <QListWidget>
#include <QPointer>

namespace tallyroom {

// Members: Clear, AddItem(text), RemoveItem(index) and the properties ListCount, List(index) and
// ListIndex. Indexes count from 0. The host may keep the object longer than the window lives: the
// members then raise 91. An index outside the list raises 9.
class ListObject : public LateBoundObject {
public:
    explicit ListObject(QListWidget* list);

private:
    QListWidget& list() const;
    int row(const Arguments& args) const;

    QPointer<QListWidget> m_list;
};

} // namespace tallyroom
