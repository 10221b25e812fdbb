// Making a data folder, or a site on a server, with all its rows.
#pragma once

#include "store/Schema.h"

#include <QString>
#include <functional>
#include <span>

namespace tallyroom::host {

// Writes the rows; the files are there to be opened at this path.
using FillData = std::function<void(const QString& dataPath)>;

// It appears complete or not at all; what is there already stays as it is. Raises 3204 for a folder
// that holds something and a site that is there, 3044 when the folder cannot be made, and what
// `fill` and the store raise.
void makeData(const QString& dataPath, std::span<const Schema::File> files, const FillData& fill);

} // namespace tallyroom::host
