#include "store/sqlite/SqliteSchema.h"

#include "common/RunError.h"
#include "store/sql/LiteralTexts.h"
#include "store/sqlite/SqliteConnection.h"
#include "store/sqlite/SqliteTypes.h"

#include <QFile>
#include <QStringList>
#include <sqlite3.h>

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
    return QStringLiteral("CREATE %1INDEX IF NOT EXISTS %2 ON %3 (%4)")
        .arg(index.unique ? QStringLiteral("UNIQUE ") : QString(), quoted(index.name),
             quoted(table.name), columns.join(QStringLiteral(", ")));
}

void addIndexes(QStringList& statements, const Table& table) {
    for (const Index& index : table.indexes) {
        if (!index.ofSites)
            statements << createIndex(table, index);
    }
}

QStringList createStatements(const File& file) {
    QStringList statements;
    for (const Table& table : file.tables) {
        statements << createTable(table);
        addIndexes(statements, table);
    }
    return statements;
}

// The engine cannot change a declared type, but the rows are kept alike: the text of the
// declaration is exchanged, as its documentation has it for changes that leave the rows alone
// (sqlite.org/lang_altertable.html).
void addWidening(QStringList& statements, const FileCompletion::Widening& widening) {
    const auto declared = [&](int width) {
        return sql::quoted(u'"', widening.name) + u' ' + declaredType({ColumnType::Text, width});
    };
    statements << QStringLiteral("UPDATE sqlite_schema SET sql = replace(sql, %1, %2) WHERE "
                                 "type = 'table' AND name = %3")
                      .arg(sql::quoted(u'\'', declared(widening.foundWidth)),
                           sql::quoted(u'\'', declared(widening.column->width)),
                           sql::quoted(u'\'', widening.table));
}

QStringList completingStatements(const FileCompletion& completion, int schemaVersion) {
    QStringList statements;
    for (const Table* table : completion.missing) {
        statements << createTable(*table);
        addIndexes(statements, *table);
    }
    for (const Table* table : completion.present)
        addIndexes(statements, *table);
    if (completion.widenings.empty())
        return statements;
    statements << QStringLiteral("PRAGMA writable_schema = ON");
    for (const FileCompletion::Widening& widening : completion.widenings)
        addWidening(statements, widening);
    // Whoever has read the tables reads them again.
    statements << QStringLiteral("PRAGMA schema_version = %1").arg(schemaVersion)
               << QStringLiteral("PRAGMA writable_schema = OFF");
    return statements;
}

int schemaVersion(SqliteConnection& connection) {
    SqliteQuery query(connection, QStringLiteral("PRAGMA schema_version"));
    query.next();
    return static_cast<int>(query.key(0));
}

// The engine would let everybody read it, and give its journal the same permissions.
void makeEmptyFile(const QString& path) {
    QFile file(path);
    const bool isMade =
        file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                  QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup);
    if (!isMade)
        throw RunError::make(ErrorNumber::cannotOpenFile, {path});
}

} // namespace

void createSqliteFile(const QString& path, const File& file) {
    makeEmptyFile(path);
    SqliteConnection connection(path);
    connection.run(QStringLiteral("BEGIN EXCLUSIVE")); // undone when the connection closes
    for (const QString& statement : createStatements(file))
        connection.run(statement);
    connection.run(QStringLiteral("COMMIT"));
}

void completeSqliteFile(const QString& path, const FileCompletion& completion) {
    SqliteConnection connection(path);
    // Else the engine lets nobody exchange the text of a declaration.
    sqlite3_db_config(connection.handle(), SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
    connection.run(QStringLiteral("BEGIN EXCLUSIVE")); // undone when the connection closes
    // Each table and index that is made counts the version up.
    constexpr int farBeyond = 1000;
    const int later = schemaVersion(connection) + farBeyond;
    for (const QString& statement : completingStatements(completion, later))
        connection.run(statement);
    connection.run(QStringLiteral("COMMIT"));
}

} // namespace tallyroom
