// The Order menu: the stored orderings, of which at most one is in force.
#pragma once

#include "ordering/Orderings.h"

#include <QAction>
#include <QMenu>
#include <functional>

namespace tallyroom {

class OrderMenu {
public:
    // The entries come below those that the menu holds already. `changed` runs when the user has
    // chosen one. The window and the menu must outlive this.
    OrderMenu(QWidget& window, QMenu& menu, std::function<void()> changed);

    // Lists what is stored; an ordering in force stays so as long as its description is there.
    // Returns how many are left out since their description cannot be read. Raises what the
    // database raises.
    [[nodiscard]] int load(const QString& dataPath);

    std::optional<Ordering> inForce() const;

private:
    void add(const Ordering& ordering);
    void choose(const QAction* chosen);

    QWidget& m_window;
    QMenu& m_menu;
    std::function<void()> m_changed;
    std::vector<QAction*> m_items; // owned by the menu
};

} // namespace tallyroom
