// Declared column types in SQLite tables, and the store's types that they stand for.
#pragma once

#include "store/Schema.h"

#include <QString>

namespace tallyroom {

struct ColumnFormat {
    Schema::ColumnType type = Schema::ColumnType::Text;
    int width = 0; // characters; 0 means any length
};

// "TEXT(9)", "LONGTEXT", "INTEGER", "DOUBLE", "DATETIME", "BOOLEAN" or "COUNTER".
QString declaredType(ColumnFormat format);

// The other way round, for tables of any origin; a type it does not know is long text.
ColumnFormat formatOfDeclaredType(const QString& declared);

} // namespace tallyroom
