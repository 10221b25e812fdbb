#include "host/NewData.h"

#include "common/RunError.h"
#include "store/Workspace.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyroom::host {

namespace {

RunError notFree(const QString& folder) {
    return {ErrorNumber::fileExists,
            QStringLiteral("'%1' is there already and holds something; it was left as it is.")
                .arg(folder),
            QStringLiteral("Brightclock")};
}

void requireFree(const QString& folder) {
    const QFileInfo info(folder);
    const QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    if (info.exists() && (!info.isDir() || !QDir(folder).isEmpty(everything)))
        throw notFree(folder);
}

// A folder that was prepared for the data keeps the group that shares it.
void makeLike(const QString& folder, const QString& made) {
    struct stat prepared {};
    if (stat(QFile::encodeName(folder).constData(), &prepared) != 0)
        return;
    const QByteArray name = QFile::encodeName(made);
    constexpr mode_t permissions = 07777;
    if (chown(name.constData(), static_cast<uid_t>(-1), prepared.st_gid) == 0)
        chmod(name.constData(), prepared.st_mode & permissions);
}

// Made beside its place and moved there when it is complete.
void makeFolder(const QString& folder, std::span<const Schema::File> files, const FillData& fill) {
    requireFree(folder);
    const QFileInfo target(folder);
    if (!QDir().mkpath(target.absolutePath()))
        throw RunError::make(ErrorNumber::invalidPath, {target.absolutePath()});
    QTemporaryDir workshop(target.absoluteFilePath() + QStringLiteral(".XXXXXX"));
    if (!workshop.isValid())
        throw RunError::make(ErrorNumber::invalidPath, {folder});
    const QString made = workshop.filePath(QStringLiteral("data"));
    QDir().mkdir(made);
    makeLike(folder, made);
    Workspace::createFiles(
        made, [&] { fill(made); }, files);
    QDir().rmdir(folder); // an empty one makes room, another one stays
    if (!QDir().rename(made, folder))
        throw notFree(folder);
}

} // namespace

void makeData(const QString& dataPath, std::span<const Schema::File> files, const FillData& fill) {
    if (Workspace::isOnServer(dataPath))
        Workspace::createFiles(
            dataPath, [&] { fill(dataPath); }, files);
    else
        makeFolder(dataPath, files, fill);
}

} // namespace tallyroom::host
