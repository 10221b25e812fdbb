#include "canvass/OrderMenu.h"

#include "common/ui/Events.h"
#include "common/ui/LongMenu.h"

namespace tallyroom {

namespace {

constexpr std::size_t firstOrdering = 2; // items 0 and 1 are "Define..." and the separator
constexpr const char* descrProperty = "descr";

} // namespace

OrderMenu::OrderMenu(QWidget& window, QMenu& menu, std::function<void()> changed)
    : m_window(window), m_menu(menu), m_changed(std::move(changed)) {
    letScroll(&m_menu);
    m_menu.addSeparator()->setObjectName(QStringLiteral("MnuOrder_1"));
}

int OrderMenu::load(const QString& dataPath) {
    const QString before = inForce().value_or(Ordering{}).descr;
    for (QAction* item : m_items)
        delete item;
    m_items.clear();
    const Orderings::Stored stored = Orderings::readAll(dataPath);
    for (const Ordering& ordering : stored.orderings) {
        add(ordering);
        if (!before.isEmpty() && before == ordering.descr)
            m_items.back()->setChecked(true);
    }
    return stored.unreadable;
}

// The description is the caption as it stands: an ampersand in it is no mark of a shortcut.
void OrderMenu::add(const Ordering& ordering) {
    QString caption = ordering.descr;
    QAction* item = m_menu.addAction(caption.replace(QLatin1String("&"), QLatin1String("&&")));
    item->setObjectName(QStringLiteral("MnuOrder_%1").arg(firstOrdering + m_items.size()));
    item->setCheckable(true);
    item->setData(ordering.details);
    item->setProperty(descrProperty, ordering.descr);
    m_items.push_back(item);
    Events::connect(item, &QAction::triggered, &m_window, [this, item] { choose(item); });
}

// There is no way back to no ordering: the one that is chosen again stays chosen.
void OrderMenu::choose(const QAction* chosen) {
    for (QAction* item : m_items)
        item->setChecked(item == chosen);
    m_changed();
}

std::optional<Ordering> OrderMenu::inForce() const {
    for (const QAction* item : m_items) {
        if (item->isChecked())
            return Ordering{item->property(descrProperty).toString(), item->data().toString()};
    }
    return std::nullopt;
}

} // namespace tallyroom
