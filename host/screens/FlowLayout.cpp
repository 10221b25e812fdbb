#include "host/screens/FlowLayout.h"

#include <QBoxLayout>
#include <QLabel>

namespace tallyroom::host {

FlowLayout::FlowLayout(QWidget* parent) : QLayout(parent) {
    setContentsMargins(0, 0, 0, 0);
    QHBoxLayout* pair = nullptr; // waits for the label's buddy
    for (auto* child : parent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!pair) {
            pair = new QHBoxLayout;
            addItem(pair);
            addChildLayout(pair);
        }
        pair->addWidget(child);
        const auto* label = qobject_cast<const QLabel*>(child);
        if (!label || !label->buddy())
            pair = nullptr;
    }
}

void FlowLayout::addItem(QLayoutItem* item) {
    m_items.emplace_back(item);
}

QLayoutItem* FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
    if (!itemAt(index))
        return nullptr;
    QLayoutItem* taken = m_items[static_cast<std::size_t>(index)].release();
    m_items.erase(m_items.begin() + index);
    return taken;
}

int FlowLayout::heightForWidth(int width) const {
    return place({0, 0, width, 0}, false);
}

QSize FlowLayout::minimumSize() const {
    QSize least;
    for (const auto& item : m_items) {
        if (!item->isEmpty())
            least = least.expandedTo(item->sizeHint());
    }
    return least;
}

void FlowLayout::setGeometry(const QRect& room) {
    QLayout::setGeometry(room);
    place(room, true);
}

// All lines are as high as the highest item, and the others are in their middle.
int FlowLayout::place(const QRect& room, bool isMeant) const {
    const int height = minimumSize().height();
    QPoint corner = room.topLeft();
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        const int width = item->sizeHint().width();
        if (corner.x() > room.x() && corner.x() + width > room.x() + room.width())
            corner = {room.x(), corner.y() + height + spacing()};
        if (isMeant)
            item->setGeometry({corner, QSize(width, height)});
        corner.rx() += width + spacing();
    }
    return corner.y() + height - room.y();
}

} // namespace tallyroom::host
