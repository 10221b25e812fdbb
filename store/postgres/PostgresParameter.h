// Values as the engine reads them.
#pragma once

#include "store/Database.h"

#include <concepts>
#include <optional>

namespace tallyroom {

// What stands for $1, $2 … in a statement. Statements name the types: `$1::bigint`. Raises 3421 for
// a text with a NUL, which the engine cannot keep, and what Variant and Dates raise.
class PostgresParameter {
public:
    PostgresParameter(const Variant& value); // Boolean: -1 or 0
    PostgresParameter(std::same_as<qint64> auto key) : m_text(QByteArray::number(key)) {}
    PostgresParameter(const QStringList& texts); // text[]

    // Null without a value.
    const char* native() const { return m_text ? m_text->constData() : nullptr; }

private:
    std::optional<QByteArray> m_text;
};

using PostgresParameters = std::vector<PostgresParameter>;

// The rows in the text format of COPY.
QByteArray copyText(const std::vector<Row>& rows);

} // namespace tallyroom
