// The engine's way of writing statements.
#pragma once

#include "store/sql/Generator.h"

namespace tallyroom {

const sql::Dialect& sqliteDialect();

inline sql::Generator sqliteGenerator() {
    return sql::Generator(sqliteDialect());
}

} // namespace tallyroom
