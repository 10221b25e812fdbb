// How the types of the tables appear in statements.
#pragma once

#include "store/Schema.h"
#include "store/sql/Operation.h"

namespace tallyroom {

sql::ValueType valueType(Schema::ColumnType type);

} // namespace tallyroom
