// The engine's way of writing statements.
#pragma once

#include "store/sql/Generator.h"

namespace tallyroom {

const sql::Dialect& postgresDialect();

inline sql::Generator postgresGenerator() {
    return sql::Generator(postgresDialect());
}

} // namespace tallyroom
