#include "store/Workspace.h"

#include "store/SqliteDatabase.h"
#include "store/StoreErrors.h"

#include <QDir>
#include <QFileInfo>

namespace tallyroom::Workspace {

namespace {

// The entry of a folder that has this name, as spelled if there is one, else in any other case.
QString findEntry(const QDir& folder, const QString& name, QDir::Filters kind) {
    if (folder.exists(name))
        return name;
    const QStringList entries = folder.entryList(kind | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString& entry : entries) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return entry;
    }
    return {};
}

// Follows the components one by one; an empty text when one of them is not there.
QString findFolder(const QString& path) {
    const bool absolute = path.startsWith(u'/');
    QString found = absolute ? QStringLiteral("/") : QDir::currentPath();
    for (const QString& component : path.split(u'/', Qt::SkipEmptyParts)) {
        const QString entry = findEntry(QDir(found), component, QDir::Dirs);
        if (entry.isEmpty())
            return {};
        found = QDir(found).filePath(entry);
    }
    return QFileInfo(found).isDir() ? QDir::cleanPath(found) : QString();
}

QString withSlashes(QString path) {
    return path.replace(u'\\', u'/');
}

RunError workspaceError(int number, const QString& path) {
    return RunError::make(number, {path}, ErrorSource::workspace);
}

} // namespace

QString resolveFolder(const QString& path) {
    QString folder = findFolder(withSlashes(path));
    if (folder.isEmpty())
        throw workspaceError(ErrorNumber::invalidPath, path);
    return folder;
}

QString resolveFile(const QString& path) {
    const QString native = withSlashes(path);
    const qsizetype slash = native.lastIndexOf(u'/');
    const QString folder = findFolder(native.left(slash + 1));
    if (folder.isEmpty())
        throw workspaceError(ErrorNumber::invalidPath, path);
    const QString name = native.mid(slash + 1);
    const QString entry = name.isEmpty() ? QString() : findEntry(QDir(folder), name, QDir::Files);
    QString file = QDir(folder).filePath(entry);
    if (entry.isEmpty() || !QFileInfo(file).isFile())
        throw workspaceError(ErrorNumber::fileNotFound, path);
    return file;
}

std::shared_ptr<Database> openDatabase(const QString& path, WhenInUse answer) {
    QString file = resolveFile(path);
    // The engine would take an empty file for a new database. Nothing here may open the file
    // itself: closing it again would end the locks that other connections of the process hold on
    // it.
    if (QFileInfo(file).size() == 0)
        throw workspaceError(ErrorNumber::unrecognizedFormat, path);
    try {
        return std::make_shared<SqliteDatabase>(file, answer);
    } catch (const RunError& error) {
        throw withSource(error, ErrorSource::workspace);
    }
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

} // namespace tallyroom::Workspace
