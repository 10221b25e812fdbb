// Menus that may hold more entries than a screen is high.
#pragma once

class QMenu;

namespace tallyroom {

// Lets the menu scroll. By itself it would go on in further columns, beyond the screen's edge.
void letScroll(QMenu* menu);

} // namespace tallyroom
