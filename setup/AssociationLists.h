// What the two associations windows do with their drop-down lists.
#pragma once

#include "common/HostContext.h"

#include <QComboBox>
#include <QStringList>
#include <vector>

namespace tallyroom::AssociationLists {

using Lists = std::vector<QComboBox*>; // in the order of Associations::kinds

// Fills the lists with the host's absent codes and selects the stored ones. When the host has none,
// says so, removes the stored codes and returns false.
bool load(QWidget* window, const QString& dataPath, const Lists& lists);

// Checks that every list has a choice, saves the codes and returns true. At the first list without
// one shows the message of the same position, and nothing is written.
[[nodiscard]] bool save(QWidget* window, const QString& dataPath, const Lists& lists,
                        const QStringList& messages);

} // namespace tallyroom::AssociationLists
