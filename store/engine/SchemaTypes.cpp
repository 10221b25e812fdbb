#include "store/engine/SchemaTypes.h"

namespace tallyroom {

sql::ValueType valueType(Schema::ColumnType type) {
    switch (type) {
    case Schema::ColumnType::Long:
    case Schema::ColumnType::Counter:
        return sql::ValueType::Long;
    case Schema::ColumnType::Double:
        return sql::ValueType::Double;
    case Schema::ColumnType::Date:
        return sql::ValueType::Date;
    case Schema::ColumnType::Boolean:
        return sql::ValueType::Boolean;
    default:
        return sql::ValueType::Text;
    }
}

Schema::ColumnType columnType(sql::ValueType type, int width) {
    switch (type) {
    case sql::ValueType::Long:
        return Schema::ColumnType::Long;
    case sql::ValueType::Double:
        return Schema::ColumnType::Double;
    case sql::ValueType::Date:
        return Schema::ColumnType::Date;
    case sql::ValueType::Boolean:
        return Schema::ColumnType::Boolean;
    default:
        return width > 0 ? Schema::ColumnType::Text : Schema::ColumnType::Memo;
    }
}

} // namespace tallyroom
