// Makes a data folder for demonstrations and tests.
#pragma once

#include "host/demo/DemoSettings.h"

#include <functional>

namespace tallyroom::host {

// Called now and then with the employees done and their number.
using DemoProgress = std::function<void(int done, int total)>;

// Makes the folder with the three files. It appears complete or not at all. Raises 3204 when the
// folder already holds something, 3044 when it cannot be made.
void createDemoData(const DemoSettings& settings, const DemoProgress& progress);

} // namespace tallyroom::host
