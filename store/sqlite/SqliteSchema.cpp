#include "store/sqlite/SqliteSchema.h"

#include "common/RunError.h"
#include "store/sql/LiteralTexts.h"
#include "store/sqlite/SqliteTypes.h"

#include <QStringList>
#include <SQLiteCpp/SQLiteCpp.h>

namespace tallyroom {

using Schema::Column;
using Schema::ColumnType;
using Schema::File;
using Schema::Index;
using Schema::Table;

namespace {

QString quoted(const char16_t* name) {
    return sql::quoted(u'"', QString::fromUtf16(name));
}

bool isText(ColumnType type) {
    return type == ColumnType::Text || type == ColumnType::Memo;
}

// A counter is declared INTEGER PRIMARY KEY, which makes it the row's own key.
QString columnDefinition(const Column& column) {
    if (column.type == ColumnType::Counter)
        return quoted(column.name) + QStringLiteral(" INTEGER PRIMARY KEY");
    const QString definition =
        quoted(column.name) + QLatin1Char(' ') + declaredType({column.type, column.width});
    return isText(column.type) ? definition + QStringLiteral(" COLLATE NOCASE") : definition;
}

QString createTable(const Table& table) {
    QStringList columns;
    for (const Column& column : table.columns)
        columns << columnDefinition(column);
    return QStringLiteral("CREATE TABLE %1 (%2)")
        .arg(quoted(table.name), columns.join(QStringLiteral(", ")));
}

QString createIndex(const Table& table, const Index& index) {
    QStringList columns;
    for (const char16_t* column : index.columns)
        columns << quoted(column);
    return QStringLiteral("CREATE %1INDEX %2 ON %3 (%4)")
        .arg(index.unique ? QStringLiteral("UNIQUE ") : QString(), quoted(index.name),
             quoted(table.name), columns.join(QStringLiteral(", ")));
}

QStringList createStatements(const File& file) {
    QStringList statements;
    for (const Table& table : file.tables) {
        statements << createTable(table);
        for (const Index& index : table.indexes) {
            if (!index.ofSites)
                statements << createIndex(table, index);
        }
    }
    return statements;
}

} // namespace

void createSqliteFile(const QString& path, const File& file) {
    try {
        SQLite::Database database(path.toUtf8().constData(),
                                  SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        SQLite::Transaction transaction(database);
        for (const QString& statement : createStatements(file))
            database.exec(statement.toUtf8().constData());
        transaction.commit();
    } catch (const SQLite::Exception&) {
        throw RunError::make(ErrorNumber::cannotOpenFile, {path});
    }
}

} // namespace tallyroom
