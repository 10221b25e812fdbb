// What the controls of the board say.
#pragma once

#include "canvass/Offer.h"

namespace Ui {
class Tallyroom;
}

namespace tallyroom::BoardControls {

// Of the selected rows, from the upper one to the lower one.
QStringList selectedEmployees(const Ui::Tallyroom& ui); // codes
QStringList selectedNames(const Ui::Tallyroom& ui);

// What an answer would do now.
Offer offer(const Ui::Tallyroom& ui, const std::optional<TotallingPeriod>& period);

} // namespace tallyroom::BoardControls
