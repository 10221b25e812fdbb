// The keys of the board that belong to no menu entry, and those of the entries used most.
#pragma once

#include <QMainWindow>

namespace Ui {
class Tallyroom;
}

namespace tallyroom::BoardKeys {

// The window and its controls must outlive the keys, which the window owns.
void connect(QMainWindow& window, const Ui::Tallyroom& ui);

// Shows something for a while where the line under the board is. Nothing pops up.
void tell(const Ui::Tallyroom& ui, const QString& text);

} // namespace tallyroom::BoardKeys
