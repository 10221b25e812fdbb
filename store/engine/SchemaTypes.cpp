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

} // namespace tallyroom
