#include "store/postgres/PostgresResult.h"

#include "store/engine/TypedValue.h"

#include <charconv>
#include <libpq-fe.h>

namespace tallyroom {

namespace {

// The engine's numbers of its built-in types, which never change.
enum NativeType : Oid {
    boolType = 16,
    byteaType = 17,
    int8Type = 20,
    int2Type = 21,
    int4Type = 23,
    float4Type = 700,
    float8Type = 701,
    numericType = 1700
};

// Also of "Infinity" and "NaN", as the engine writes them.
double parsedNumber(const char* text, int size) {
    double number = 0;
    std::from_chars(text, text + size, number);
    return number;
}

Variant parsedBytes(const char* text, int size) {
    constexpr int mark = 2; // "\x"
    return {QByteArray::fromHex(QByteArray::fromRawData(text + mark, size - mark))};
}

} // namespace

PostgresResult::PostgresResult(pg_result* owned) : m_result(owned, PQclear) {}

int PostgresResult::rows() const {
    return PQntuples(m_result.get());
}

qint64 PostgresResult::changedRows() const {
    return QByteArray(PQcmdTuples(m_result.get())).toLongLong();
}

QByteArray PostgresResult::command() const {
    return PQcmdStatus(m_result.get());
}

bool PostgresResult::isNull(int row, int column) const {
    return PQgetisnull(m_result.get(), row, column) != 0;
}

qint64 PostgresResult::key(int row, int column) const {
    qint64 key = 0;
    const char* text = PQgetvalue(m_result.get(), row, column);
    std::from_chars(text, text + PQgetlength(m_result.get(), row, column), key);
    return key;
}

QString PostgresResult::text(int row, int column) const {
    return QString::fromUtf8(PQgetvalue(m_result.get(), row, column),
                             PQgetlength(m_result.get(), row, column));
}

Variant PostgresResult::value(int row, int column, sql::ValueType type) const {
    if (isNull(row, column))
        return Variant::null();
    const char* native = PQgetvalue(m_result.get(), row, column);
    const int size = PQgetlength(m_result.get(), row, column);
    switch (PQftype(m_result.get(), column)) {
    case boolType:
        return typedNumber(*native == 't' ? -1 : 0,
                           type == sql::ValueType::Null ? sql::ValueType::Boolean : type);
    case int2Type:
    case int4Type:
    case int8Type:
        if (type == sql::ValueType::Null)
            return wholeNumber(parsedNumber(native, size));
        [[fallthrough]];
    case float4Type:
    case float8Type:
    case numericType:
        return typedNumber(parsedNumber(native, size), type);
    case byteaType:
        return parsedBytes(native, size);
    default:
        return typedText(text(row, column), type);
    }
}

Row PostgresResult::row(int row, const std::vector<sql::BoundColumn>& columns, int first) const {
    Row values;
    values.reserve(columns.size());
    for (const sql::BoundColumn& column : columns)
        values.push_back(value(row, first + static_cast<int>(values.size()), column.value->type));
    return values;
}

} // namespace tallyroom
