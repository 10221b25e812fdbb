// How the types of the tables appear in statements.
#pragma once

#include "store/Schema.h"
#include "store/sql/Operation.h"

namespace tallyroom {

sql::ValueType valueType(Schema::ColumnType type);
// The other way round: a text without a width may have any.
Schema::ColumnType columnType(sql::ValueType type, int width);

} // namespace tallyroom
