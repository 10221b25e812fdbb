// Makes data for demonstrations and tests.
#pragma once

#include "host/demo/DemoSettings.h"

#include <functional>

namespace tallyroom::host {

// Called now and then with the employees done and their number.
using DemoProgress = std::function<void(int done, int total)>;

// Makes the three files in a folder or as a site; see makeData().
void createDemoData(const DemoSettings& settings, const DemoProgress& progress);

} // namespace tallyroom::host
