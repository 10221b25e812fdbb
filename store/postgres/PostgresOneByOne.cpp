#include "store/postgres/PostgresOneByOne.h"

#include "store/postgres/PostgresDialect.h"

namespace tallyroom {

namespace {

void writeUnlessRefused(PostgresSession& session, const sql::CatalogTable& table,
                        const PostgresStatement& statement) {
    try {
        session.write(table.place, statement);
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
    PostgresStatement update = statementOf(postgresGenerator().updateRows(row));
    update.parameters.emplace_back(qint64());
    update.native += QStringLiteral(" WHERE tr_key = $%1").arg(update.parameters.size());
    sql::Native ordered = postgresGenerator().keysWhere(rows, statement.where);
    ordered.text += QStringLiteral(" ORDER BY 1");
    const PostgresResult keys = session.read(ordered);
    for (int at = 0; at < keys.rows(); ++at) {
        update.parameters.back() = keys.key(at, 0);
        writeUnlessRefused(session, *statement.target.table, update);
    }
}

void insertOneByOne(PostgresSession& session, const sql::CatalogTable& table,
                    const QStringList& columns, const std::vector<Row>& rows) {
    const QString insert = postgresGenerator().insertRowOrSkip(table, columns);
    for (const Row& row : rows)
        writeUnlessRefused(session, table, {insert, {row.begin(), row.end()}});
}

void insertAtOnce(PostgresSession& session, const sql::CatalogTable& table,
                  const QStringList& columns, const std::vector<Row>& rows) {
    const QString insert = postgresGenerator().insertRowOrSkip(table, columns);
    std::vector<PostgresStatement> statements;
    for (const Row& row : rows)
        statements.push_back({insert, PostgresParameters(row.begin(), row.end())});
    try {
        session.writeAll(table.place, statements);
    } catch (const RunError& error) {
        if (!isRefusal(error))
            throw;
        insertOneByOne(session, table, columns, rows);
    }
}

} // namespace tallyroom
