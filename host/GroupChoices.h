// The boxes in which a group of employees is chosen.
#pragma once

#include "reports/HostData.h"

class QComboBox;

namespace tallyroom::host {

// Fills them with what the employees have, by name; the data of an entry is its code, and the first
// entry is everybody, with an empty one.
void fillGroupChoices(const HostData& data, QComboBox& department, QComboBox& shift,
                      QComboBox& qualification);

} // namespace tallyroom::host
