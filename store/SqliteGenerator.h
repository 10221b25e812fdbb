// Statements in the engine's own text.
#pragma once

#include "store/sql/Generator.h"

namespace tallyroom {

inline sql::Generator generator() {
    return sql::Generator(sql::sqliteDialect());
}

} // namespace tallyroom
