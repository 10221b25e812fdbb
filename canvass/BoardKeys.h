// The keys of the board that belong to no menu entry, and those of the entries used most.
#pragma once

#include <QMainWindow>

namespace Ui {
class Tallyroom;
}

namespace tallyroom::BoardKeys {

// The window and its controls must outlive the keys, which the window owns.
void connect(QMainWindow& window, const Ui::Tallyroom& ui);

} // namespace tallyroom::BoardKeys
