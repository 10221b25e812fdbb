#include "store/engine/FilePaths.h"

#include "store/ErrorSource.h"

#include <QDir>
#include <QFileInfo>

namespace tallyroom::FilePaths {

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

RunError pathError(int number, const QString& path) {
    return RunError::make(number, {path}, ErrorSource::workspace);
}

} // namespace

QString resolveFile(const QString& path) {
    const QString native = withSlashes(path);
    const qsizetype slash = native.lastIndexOf(u'/');
    const QString folder = findFolder(native.left(slash + 1));
    if (folder.isEmpty())
        throw pathError(ErrorNumber::invalidPath, path);
    const QString name = native.mid(slash + 1);
    const QString entry = name.isEmpty() ? QString() : findEntry(QDir(folder), name, QDir::Files);
    QString file = QDir(folder).filePath(entry);
    if (entry.isEmpty() || !QFileInfo(file).isFile())
        throw pathError(ErrorNumber::fileNotFound, path);
    return file;
}

} // namespace tallyroom::FilePaths
