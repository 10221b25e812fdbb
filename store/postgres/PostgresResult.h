// The rows that a statement gave. They are all here already and need no connection any more.
#pragma once

#include "store/Database.h"
#include "store/sql/Bound.h"

#include <memory>

struct pg_result;

namespace tallyroom {

class PostgresResult {
public:
    explicit PostgresResult(pg_result* owned);

    int rows() const;
    qint64 changedRows() const; // written or removed by the statement

    QByteArray command() const; // as the server names what it has done

    // Rows and columns count from 0.
    bool isNull(int row, int column) const;
    qint64 key(int row, int column) const;
    QString text(int row, int column) const;
    // The value as the column's type has it; what was stored with another type keeps its own.
    Variant value(int row, int column, sql::ValueType type) const;

    // The values of columns that begin with the `first` one.
    Row row(int row, const std::vector<sql::BoundColumn>& columns, int first = 0) const;

    const pg_result* native() const { return m_result.get(); }

private:
    std::shared_ptr<pg_result> m_result;
};

} // namespace tallyroom
