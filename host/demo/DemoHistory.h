// A believable time history: worked days, overtime, absences, and past answers to offers.
#pragma once

#include "host/demo/DemoPeople.h"

#include <functional>

namespace tallyroom::host {

// Called now and then with the number of employees done.
using LoadProgress = std::function<void(int done)>;

// Writes the days worked and missed by everybody, employee by employee, which is the order of the
// table's index.
void loadHistory(Database& database, const std::vector<DemoPerson>& people,
                 const DemoSettings& settings, QRandomGenerator& random,
                 const LoadProgress& progress);

// Writes answers of the last weeks, each into the host's history and into the add-in's audit.
void loadAnswers(Database& hostFile, Database& addInFile, const std::vector<DemoPerson>& people,
                 const DemoSettings& settings, QRandomGenerator& random);

} // namespace tallyroom::host
