// The part of PostgresFunctions that compares, changes and cuts texts.
#pragma once

#include <QStringList>

namespace tallyroom {

QStringList postgresTexts();

} // namespace tallyroom
