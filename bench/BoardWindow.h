// The board's window for a measurement.
#pragma once

#include "canvass/Tallyroom.h"
#include "common/ui/Grid.h"

#include <functional>
#include <stdexcept>
#include <string>

namespace tallyroom::bench {

// Throws std::runtime_error when the window has no such control.
template<class T>
T& child(QWidget& window, const char* name) {
    if (auto* found = window.findChild<T*>(QString::fromLatin1(name)))
        return *found;
    throw std::runtime_error(std::string("no control ") + name);
}

// Shows the board on the folder and works it; what `use` throws is thrown on.
void withBoard(const QString& folder, const std::function<void(Tallyroom&)>& use);

// All optional columns, and the ordering of the demonstration data that sorts by total overtime.
void showEverything(Tallyroom& window);

QStringList codesOf(const Grid& grid);

// As in a process that has not measured a text yet.
void forgetWidths();

} // namespace tallyroom::bench
