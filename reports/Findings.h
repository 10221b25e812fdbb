// What checks have found.
#pragma once

#include "common/Variant.h"

#include <QStringList>
#include <vector>

namespace tallyroom {

struct Finding {
    Variant day;  // of the overtime, or Null
    QString code; // whose
    QString what;
    QString remedy; // what to do
};

// One thing that is checked.
struct Check {
    QString caption;
    std::vector<Finding> findings;
};

struct Findings {
    std::vector<Check> checks; // those that found nothing as well
    QStringList notes;         // what could not be checked, and why
};

// "1006 Thompson, 1053 Pereira, 1162 Baker and 4 others"
QString listed(const QStringList& names);

} // namespace tallyroom
