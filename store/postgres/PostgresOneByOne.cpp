#include "store/postgres/PostgresOneByOne.h"

#include "store/postgres/PostgresDialect.h"

namespace tallyroom {

namespace {

void writeUnlessRefused(PostgresSession& session, const sql::CatalogTable& table,
                        const QString& native, const PostgresParameters& parameters) {
    try {
        session.write(table.place, native, parameters);
    } catch (const RunError& error) {
        if (!isRefusal(error))
            throw;
    }
}

} // namespace

bool isRefusal(const RunError& error) {
    return error.number() == ErrorNumber::duplicateKey ||
           error.number() == ErrorNumber::valueRequired ||
           error.number() == ErrorNumber::valueProhibited;
}

void updateOneByOne(PostgresSession& session, const sql::BoundUpdate& statement) {
    sql::BoundSelect rows;
    rows.source = statement.target;
    sql::BoundUpdate row = statement;
    row.where = nullptr;
    const QString update = postgresGenerator().updateRows(row) + QStringLiteral(" WHERE tr_key = ");
    const PostgresResult keys = session.read(postgresGenerator().keysWhere(rows, statement.where) +
                                             QStringLiteral(" ORDER BY 1"));
    for (int at = 0; at < keys.rows(); ++at)
        writeUnlessRefused(session, *statement.target.table, update + keys.text(at, 0), {});
}

void insertOneByOne(PostgresSession& session, const sql::CatalogTable& table,
                    const QStringList& columns, const std::vector<Row>& rows) {
    const QString insert = postgresGenerator().insertRowOrSkip(table, columns);
    for (const Row& row : rows)
        writeUnlessRefused(session, table, insert, {row.begin(), row.end()});
}

void insertAtOnce(PostgresSession& session, const sql::CatalogTable& table,
                  const QStringList& columns, const std::vector<Row>& rows) {
    const QString insert = postgresGenerator().insertRowOrSkip(table, columns);
    std::vector<PostgresStatement> statements;
    for (const Row& row : rows)
        statements.push_back({insert, PostgresParameters(row.begin(), row.end())});
    try {
        session.writeAll(table.place, std::move(statements));
    } catch (const RunError& error) {
        if (!isRefusal(error))
            throw;
        insertOneByOne(session, table, columns, rows);
    }
}

} // namespace tallyroom
