#include "store/Workspace.h"

#include "store/ErrorSource.h"
#include "store/engine/FileCompletion.h"
#include "store/engine/FilePaths.h"
#include "store/postgres/PostgresSite.h"
#include "store/postgres/ServerAddress.h"
#include "store/sqlite/SqliteConnection.h"
#include "store/sqlite/SqliteCopySearch.h"
#include "store/sqlite/SqliteDatabase.h"
#include "store/sqlite/SqliteSchema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

namespace tallyroom::Workspace {

namespace {

QString pathOf(const QString& dataPath, const Schema::File& file) {
    return dataPath + QLatin1Char('\\') + QString::fromUtf16(file.name);
}

bool existsCaseBlind(const QDir& folder, const QString& name) {
    return folder.entryList(QDir::AllEntries | QDir::Hidden).contains(name, Qt::CaseInsensitive);
}

std::shared_ptr<Database> openFile(const QString& path, WhenInUse answer) {
    const QString file = FilePaths::resolveFile(path);
    // The engine would take an empty file for a new database. Nothing here may open the file
    // itself: closing it again would end the locks that other connections of the process hold on
    // it.
    if (QFileInfo(file).size() == 0)
        throw RunError::make(ErrorNumber::unrecognizedFormat, {path}, ErrorSource::workspace);
    return std::make_shared<SqliteDatabase>(file, answer, makeSqliteCopySearch);
}

void createInFolder(const QDir& folder, const std::function<void()>& fill,
                    std::span<const Schema::File> files) {
    for (const Schema::File& file : files) {
        const QString name = QString::fromUtf16(file.name);
        if (existsCaseBlind(folder, name))
            throw RunError::make(ErrorNumber::fileExists, {folder.filePath(name)});
    }
    QStringList created;
    auto undo = qScopeGuard([&created] {
        for (const QString& path : created)
            QFile::remove(path);
    });
    for (const Schema::File& file : files) {
        created << folder.filePath(QString::fromUtf16(file.name));
        createSqliteFile(created.last(), file);
    }
    fill();
    undo.dismiss();
}

} // namespace

QStringList engineVersions() {
    QStringList versions{QStringLiteral("SQLite ") + sqliteVersion()};
    if (const QString server = postgresVersion(); !server.isEmpty())
        versions << QStringLiteral("libpq ") + server;
    return versions;
}

bool isOnServer(const QString& dataPath) {
    return isServerAddress(dataPath);
}

QString siteBeside(const QString& address, const QString& ending) {
    return addressBeside(address, ending);
}

std::shared_ptr<Database> openDatabase(const QString& path, WhenInUse answer) {
    try {
        return isServerAddress(path) ? openOnServer(path, answer, makeSqliteCopySearch)
                                     : openFile(path, answer);
    } catch (const RunError& error) {
        throw withSource(error, ErrorSource::workspace);
    }
}

QString resolveFile(const QString& path) {
    return FilePaths::resolveFile(path);
}

std::shared_ptr<Database> openAddIn(const QString& dataPath, WhenInUse answer) {
    return openDatabase(dataPath + QStringLiteral("\\aidb01.mdb"), answer);
}

std::shared_ptr<Database> openMain(const QString& dataPath, WhenInUse answer) {
    return openDatabase(dataPath + QStringLiteral("\\vrlxdb01.mdb"), answer);
}

std::shared_ptr<Database> openHostOptions(const QString& dataPath) {
    return openDatabase(dataPath + QStringLiteral("\\bcx.mdb"));
}

void createFiles(const QString& folder, const std::function<void()>& fill,
                 std::span<const Schema::File> files) {
    if (isServerAddress(folder))
        createSite(folder, fill, files);
    else
        createInFolder(QDir(folder), fill, files);
}

QStringList lackingIn(const QString& dataPath) {
    QStringList lines;
    for (const Schema::File& file : Schema::files())
        lines += linesOf(completionOf(file, openDatabase(pathOf(dataPath, file))->tables()));
    return lines;
}

void completeFiles(const QString& dataPath) {
    for (const Schema::File& file : Schema::files()) {
        const QString path = pathOf(dataPath, file);
        const FileCompletion completion = completionOf(file, openDatabase(path)->tables());
        if (isServerAddress(path))
            completeOnServer(path, completion);
        else
            completeSqliteFile(FilePaths::resolveFile(path), completion);
    }
}

} // namespace tallyroom::Workspace
