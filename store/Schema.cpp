#include "store/Schema.h"

#include "common/RunError.h"
#include "store/SqliteTypes.h"

#include <QDir>
#include <QFile>
#include <SQLiteCpp/SQLiteCpp.h>
#include <stdexcept>

namespace tallyroom::Schema {

namespace {

QString quoted(const char16_t* name) {
    return QLatin1Char('"') + QString::fromUtf16(name) + QLatin1Char('"');
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

bool existsCaseBlind(const QDir& folder, const QString& name) {
    return folder.entryList(QDir::AllEntries | QDir::Hidden).contains(name, Qt::CaseInsensitive);
}

void createFile(const QString& path, const File& file) {
    SQLite::Database database(path.toUtf8().constData(),
                              SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    SQLite::Transaction transaction(database);
    for (const QString& statement : createTableStatements(file) + createIndexStatements(file))
        database.exec(statement.toUtf8().constData());
    transaction.commit();
}

} // namespace

const Table& table(std::u16string_view name) {
    for (const File& file : files()) {
        for (const Table& candidate : file.tables) {
            if (candidate.name == name)
                return candidate;
        }
    }
    throw std::logic_error("no such table in the schema");
}

const Column& column(const Table& table, std::u16string_view name) {
    for (const Column& candidate : table.columns) {
        if (candidate.name == name)
            return candidate;
    }
    throw std::logic_error("no such column in the schema");
}

QStringList createTableStatements(const File& file) {
    QStringList statements;
    for (const Table& table : file.tables)
        statements << createTable(table);
    return statements;
}

QStringList createIndexStatements(const File& file) {
    QStringList statements;
    for (const Table& table : file.tables) {
        for (const Index& index : table.indexes)
            statements << createIndex(table, index);
    }
    return statements;
}

void createFiles(const QString& folder) {
    const QDir directory(folder);
    for (const File& file : files()) {
        const QString name = QString::fromUtf16(file.name);
        if (existsCaseBlind(directory, name))
            throw RunError::make(ErrorNumber::fileExists, {directory.filePath(name)});
    }
    QStringList created;
    try {
        for (const File& file : files()) {
            created << directory.filePath(QString::fromUtf16(file.name));
            createFile(created.last(), file);
        }
    } catch (const SQLite::Exception&) {
        for (const QString& path : created)
            QFile::remove(path);
        throw RunError::make(ErrorNumber::cannotOpenFile, {created.last()});
    }
}

} // namespace tallyroom::Schema
