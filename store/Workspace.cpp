#include "store/Workspace.h"

#include "store/SqliteDatabase.h"
#include "store/StoreErrors.h"

#include <QDir>
#include <QFile>
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

// An empty file, or one of another program, is told by its first bytes.
void requireDatabaseFormat(const QString& path, const QString& file) {
    static const QByteArray mark("SQLite format 3\0", 16);
    QFile content(file);
    if (!content.open(QIODevice::ReadOnly))
        throw workspaceError(ErrorNumber::cannotOpenFile, path);
    if (content.read(mark.size()) != mark)
        throw workspaceError(ErrorNumber::unrecognizedFormat, path);
}

} // namespace

QString resolveFolder(const QString& path) {
    const QString folder = findFolder(withSlashes(path));
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
    const QString file = QDir(folder).filePath(entry);
    if (entry.isEmpty() || !QFileInfo(file).isFile())
        throw workspaceError(ErrorNumber::fileNotFound, path);
    return file;
}

std::shared_ptr<Database> openDatabase(const QString& path) {
    const QString file = resolveFile(path);
    requireDatabaseFormat(path, file);
    try {
        return std::make_shared<SqliteDatabase>(file);
    } catch (const RunError& error) {
        throw withSource(error, ErrorSource::workspace);
    }
}

} // namespace tallyroom::Workspace
